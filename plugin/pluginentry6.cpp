// What a plugin loader of Qt 6 finds in the library. moc writes it: unlike in the Qt 5 series, it
// is of one form for all of the loaders.

#include "plugin/tavolinsplugin.h"

namespace Entry {

// Of the same name, as the name stands in the metadata.
class TavolinsPlugin : public ::TavolinsPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.mervo.tavolins.thememanager")
};

} // namespace Entry

#include "pluginentry6.moc"
