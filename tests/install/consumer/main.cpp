// The least that native code does with the package: it includes every public header, and shares the
// catalogue, with the bundled themes in it, with the QML that it runs. Ends with the number of
// themes that the QML sees, with 100 when it does not run.

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
    ThemeManager::getInstance()->loadThemes(QStringLiteral(THEMES_DIR));
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(IMPORT_PATH));
    engine.loadData("import " MODULE_URI " 1.0\n"
                    "import QtQml 2.2\n"
                    "Timer {\n"
                    "    running: true; interval: 0\n"
                    "    onTriggered: Qt.exit(ThemeManager.rowCount())\n"
                    "}\n");
    return engine.rootObjects().isEmpty() ? 100 : application.exec();
}
