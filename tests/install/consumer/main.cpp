// The least that native code does with the installed package: it includes every public header, and
// shares the catalogue with the QML that it runs.

#include <manager/thememanager.h>
#include <plugin/tavolinsplugin.h>
#include <theme/theme.h>
#include <theme/themeprivate.h>
#include <values/themeobject.h>
#include <values/themeobjectcolors.h>
#include <values/themeobjectfonts.h>

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    ThemeManager::getInstance()->addTheme(new Theme(ThemeManager::getInstance()));
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(IMPORT_PATH));
    engine.load(QUrl::fromLocalFile(application.arguments().at(1)));
    return engine.rootObjects().isEmpty() ? 3 : application.exec();
}
