#include "examples/settings/settingswindow.h"

#include <QtGui/QGuiApplication>

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tavolins"));
    QCoreApplication::setApplicationName(QStringLiteral("harbour-watch"));

    const SettingsWindow settings(QCoreApplication::applicationDirPath()
                                  + QStringLiteral("/../qml"));
    return settings.window() ? QGuiApplication::exec() : 1;
}
