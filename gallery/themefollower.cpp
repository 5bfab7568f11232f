#include "gallery/themefollower.h"

#include <QtCore/QFileInfo>

namespace {

// Longer than an editor pauses within one save, too short to be waited for.
const int quietMilliseconds = 100;

} // namespace

ThemeFollower::ThemeFollower(QObject *parent)
    : QObject(parent)
{
    m_quiet.setSingleShot(true);
    m_quiet.setInterval(quietMilliseconds);
    const auto wait = [this] { m_quiet.start(); };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, wait);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, wait);
    connect(&m_quiet, &QTimer::timeout, this, &ThemeFollower::settle);
}

void ThemeFollower::follow(const QString &path)
{
    m_quiet.stop();
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    if (!watched.isEmpty())
        m_watcher.removePaths(watched);
    m_path = path;
    watch();
}

void ThemeFollower::watch()
{
    if (m_path.isEmpty() || m_path.startsWith(QLatin1Char(':')))
        return;
    const QString folder = QFileInfo(m_path).absolutePath();
    if (!m_watcher.directories().contains(folder) && QFileInfo::exists(folder))
        m_watcher.addPath(folder);
    if (!m_watcher.files().contains(m_path) && QFileInfo::exists(m_path))
        m_watcher.addPath(m_path);
}

void ThemeFollower::settle()
{
    watch();
    Q_EMIT saved();
}
