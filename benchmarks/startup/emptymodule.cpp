// The least that a QML module can be: what importing one costs at all.

#include <QtQml/QQmlExtensionPlugin>
#include <QtQml/qqml.h>

class EmptyModule : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override { qmlRegisterModule(uri, 1, 0); }
};

#include "emptymodule.moc"
