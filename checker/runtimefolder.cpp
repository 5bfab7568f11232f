#include "checker/runtimefolder.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#if defined(Q_OS_UNIX)
#include <unistd.h>
#endif

void ensureRuntimeFolder()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    // By number: in a container the user may have no name, and a home that is somebody else's.
    const QString folder = QDir::tempPath() + QLatin1String("/runtime-")
            + QString::number(geteuid());
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder));
#endif
}
