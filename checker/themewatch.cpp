#include "checker/themewatch.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace {

// Longer than an editor pauses within one save, too short to be waited for.
const int quietMilliseconds = 120;

// Someone who never pauses is told of the state in between, too.
const int longestBurstMilliseconds = 1000;

const qint64 largestHashedFile = 1 << 20;

QString folderOf(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() ? path : info.path();
}

} // namespace

ThemeWatch::ThemeWatch(const QStringList &paths, QObject *parent)
    : QObject(parent)
    , m_paths(paths)
{
    m_quiet.setSingleShot(true);
    connect(&m_quiet, &QTimer::timeout, this, &ThemeWatch::settle);
    arm();
    m_known = fingerprint();
}

void ThemeWatch::wait()
{
    if (!m_quiet.isActive())
        m_burst.start();
    const int left = longestBurstMilliseconds - int(m_burst.elapsed());
    m_quiet.start(std::clamp(left, 0, quietMilliseconds));
}

void ThemeWatch::settle()
{
    // Armed before anything is read: what changes from here on is told of by another event.
    arm();
    const QByteArray now = fingerprint();
    if (now == m_known)
        return;
    m_known = now;
    Q_EMIT changed();
}

void ThemeWatch::arm()
{
    QStringList paths = watchedFiles();
    for (const QString &path : m_paths) {
        const QString folder = folderOf(path);
        // The folder's own folder tells when it is replaced.
        paths.append(QFileInfo(QDir(folder).absolutePath()).path());
        paths.append(folder);
        for (const char *name : { "styles", "fonts" })
            paths.append(QDir(folder).filePath(QLatin1String(name)));
    }
    for (int i = 0, count = int(paths.size()); i < count; ++i) {
        const QFileInfo info(paths.at(i));
        if (info.isSymLink())
            paths.append(QFileInfo(info.symLinkTarget()).path());
        const QString target = info.canonicalPath();
        if (!target.isEmpty() && target != info.absolutePath())
            paths.append(target);
    }
    paths.removeDuplicates();
    const auto end = std::remove_if(paths.begin(), paths.end(),
                                    [](const QString &path) { return !QFileInfo::exists(path); });
    paths.erase(end, paths.end());

    // A watch stays with what had the path once: what was put in its place needs another one.
    m_watcher = std::make_unique<QFileSystemWatcher>();
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &ThemeWatch::wait);
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, &ThemeWatch::wait);
    if (!paths.isEmpty())
        m_watcher->addPaths(paths);
}

QStringList ThemeWatch::watchedFiles() const
{
    QStringList files;
    const QDir::Filters all = QDir::Files | QDir::Hidden | QDir::System;
    for (const QString &path : m_paths) {
        const QDir folder(folderOf(path));
        const QStringList names = folder.entryList(QStringList(QStringLiteral("*.thm")), all);
        for (const QString &name : names)
            files.append(folder.filePath(name));
        if (!QFileInfo(path).isDir())
            files.append(path);
        for (const char *name : { "styles", "fonts" }) {
            const QDir beside(folder.filePath(QLatin1String(name)));
            const QStringList others = beside.entryList(all);
            for (const QString &other : others)
                files.append(beside.filePath(other));
        }
    }
    files.removeDuplicates();
    return files;
}

QByteArray ThemeWatch::fingerprint() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const QStringList files = watchedFiles();
    for (const QString &path : files) {
        const QFileInfo info(path);
        hash.addData(path.toUtf8());
        if (!info.isFile()) {
            hash.addData(QByteArray(info.exists() ? "\n?" : "\n-"));
            continue;
        }
        hash.addData(QByteArray::number(info.size()));
        QFile file(path);
        if (info.size() <= largestHashedFile && file.open(QIODevice::ReadOnly))
            hash.addData(&file);
        else
            hash.addData(QByteArray::number(info.lastModified().toMSecsSinceEpoch()));
    }
    return hash.result();
}
