#include "plugin/tavolinsplugin.h"

#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtQml/qqml.h>

namespace {

QObject *themeManager(QQmlEngine *, QJSEngine *)
{
    return ThemeManager::getInstance();
}

} // namespace

TavolinsPlugin::TavolinsPlugin(QObject *parent)
    : QQmlExtensionPlugin(parent)
{
}

void TavolinsPlugin::registerTypes(const char *uri)
{
    qmlRegisterUncreatableType<Theme>(uri, 1, 0, "Theme",
                                      QStringLiteral("Theme is an attached property"));
    qmlRegisterSingletonType<ThemeManager>(uri, 1, 0, "ThemeManager", themeManager);
}
