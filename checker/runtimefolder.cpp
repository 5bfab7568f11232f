#include "checker/runtimefolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

void ensureRuntimeFolder()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    const QString user = QFileInfo(QDir::homePath()).owner();
    qputenv("XDG_RUNTIME_DIR",
            QFile::encodeName(QDir::tempPath() + QLatin1String("/runtime-") + user));
#endif
}
