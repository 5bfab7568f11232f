// Registers what the plugin registers, and also names the classes that QML reaches only through
// properties of others, so that qmlplugindump describes them as well. Built for plugins.qmltypes
// alone and not installed.

#include "plugin/tavolinsplugin.h"
#include "values/themeobject.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtQml/QQmlExtensionPlugin>
#include <QtQml/qqml.h>

class TavolinsTypesDump : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override
    {
        TavolinsPlugin().registerTypes(uri);
#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
        qmlRegisterAnonymousType<ThemeObject>(uri, 1);
        qmlRegisterAnonymousType<ThemeObjectColors>(uri, 1);
        qmlRegisterAnonymousType<ThemeObjectFonts>(uri, 1);
#else
        qmlRegisterType<ThemeObject>();
        qmlRegisterType<ThemeObjectColors>();
        qmlRegisterType<ThemeObjectFonts>();
#endif
    }
};

#include "typesdump.moc"
