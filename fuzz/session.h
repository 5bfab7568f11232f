#pragma once

#include "manager/thememanager.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QtGlobal>

/// The surroundings of one input: an application, a catalogue as in a process that has just
/// started, and an empty folder in memory. Ends the process on any message on Qt's log except the
/// warning that a file can't be opened. Afterwards all that the input created is gone.
class FuzzSession
{
public:
    FuzzSession();
    ~FuzzSession();

    FuzzSession(const FuzzSession &) = delete;
    FuzzSession &operator=(const FuzzSession &) = delete;

    ThemeManager *manager() const;

    /// The folder, without a slash at the end.
    QString folder() const;

    /// Writes a file in folder() and returns its path. A file that can't be written, because a
    /// folder has its name already, is left out.
    QString write(const QString &name, const QByteArray &content);

    /// How often it was told that a file can't be opened.
    int openFailures() const;

    /// Runs deferred deletions and what the file watcher has to tell.
    static void settle();

    /// Ends the process with \a what unless \a holds.
    static void check(bool holds, const char *what);

    static ThemePrivate *data(const Theme &theme);
    static bool sameValues(const Theme &one, const Theme &other);

private:
    QString m_folder;
    QtMessageHandler m_previousHandler;
    bool m_leaksAreExpected = false;
};
