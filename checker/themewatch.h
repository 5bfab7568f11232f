#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <memory>

/// Notices when the files that a check of themes reads have changed, however editors save: in
/// place, in several writes, by renaming another file over the old one, by deleting and creating
/// it, or behind a link.
///
/// For that it watches the files, their folders and the folders that links lead to, arms all of
/// them anew after each event, and waits until nothing has happened for a moment.
class ThemeWatch : public QObject
{
    Q_OBJECT

public:
    /// Watches \a paths, folders of themes and theme files. What is there now counts as known.
    explicit ThemeWatch(const QStringList &paths, QObject *parent = nullptr);

Q_SIGNALS:
    /// Some of the files have another content than at the last signal. Emitted once for a burst of
    /// changes.
    void changed();

private:
    void wait();
    void settle();
    void arm();
    QStringList watchedFiles() const;
    QByteArray fingerprint() const;

    const QStringList m_paths;
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    QTimer m_quiet;
    QElapsedTimer m_burst;
    QByteArray m_known;
};
