#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

/// Notices that a file was saved, however an editor does that: in place, in several writes, by
/// renaming another file over it, or by deleting and creating it.
///
/// For that it watches the folder beside the file, watches the file anew after each event, and
/// waits until nothing has happened for a moment. It may tell of a save that changed nothing.
class ThemeFollower : public QObject
{
    Q_OBJECT

public:
    explicit ThemeFollower(QObject *parent = nullptr);

    /// Follows the file at \a path instead of the one before. A path that is empty, or in the
    /// application's resources, has nothing to follow.
    void follow(const QString &path);

Q_SIGNALS:
    void saved();

private:
    void watch();
    void settle();

    QFileSystemWatcher m_watcher;
    QTimer m_quiet;
    QString m_path;
};
