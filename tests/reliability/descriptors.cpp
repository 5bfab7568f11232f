#include "reliability/descriptors.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

QStringList descriptors()
{
    // Most are no files, so they are listed as broken links, which count as system entries. The
    // listing itself uses one that is gone afterwards.
    const QStringList entries = QDir(QStringLiteral("/proc/self/fd"))
                                        .entryList(QDir::Files | QDir::Dirs | QDir::System
                                                   | QDir::NoDotAndDotDot);
    QStringList names;
    for (const QString &name : entries) {
        if (QFileInfo(QStringLiteral("/proc/self/fd/") + name).isSymLink())
            names.append(name);
    }
    return names;
}

} // namespace

int Descriptors::openCount()
{
    return descriptors().size();
}

int Descriptors::watchCount()
{
    int count = 0;
    const QStringList names = descriptors();
    for (const QString &name : names) {
        QFile info(QStringLiteral("/proc/self/fdinfo/") + name);
        if (info.open(QIODevice::ReadOnly))
            count += info.readAll().count("inotify wd:");
    }
    return count;
}
