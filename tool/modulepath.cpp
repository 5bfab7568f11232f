#include "tool/modulepath.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

QString modulePath()
{
    const QDir here(QCoreApplication::applicationDirPath());
    QString built = QDir::cleanPath(here.absoluteFilePath(QStringLiteral("../qml")));
    if (QFileInfo::exists(built + QLatin1String("/" TOOL_MODULE_DIR "/qmldir")))
        return built;
    return QDir::cleanPath(here.absoluteFilePath(QStringLiteral(TOOL_INSTALLED_QML_DIR)));
}
