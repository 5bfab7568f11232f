// What a plugin loader finds in the library: the metadata block, the Qt version record and the two
// entry functions. They are written here because moc of Qt 5.15 describes plugins in another form
// than the one that all loaders of the Qt 5 series read.

#include "plugin/binaryjson.h"
#include "plugin/tavolinsplugin.h"

#include <QtCore/QPointer>
#include <QtCore/qplugin.h>

namespace {

/// The version of Qt whose API the plugin is written for, 5.6.2. Loaders refuse a plugin of a
/// later Qt than their own, so this is not the version that it happens to be built with.
constexpr quint32 qtVersion = 0x050602;

#if defined(TAVOLINS_DEBUG)
constexpr bool debugBuild = true;
#else
constexpr bool debugBuild = false;
#endif

constexpr const char *interfaceId = "com.mervo.tavolins.thememanager";
constexpr const char *pluginClass = "TavolinsPlugin";

/// Writes the metadata; called once to measure it and once to lay it out.
template <std::size_t Size>
constexpr BinaryJson::Writer<Size> metadata()
{
    BinaryJson::Writer<Size> writer = {};
    writer.raw("QTMETADATA  ");
    writer.beginDocument();
    // Binary JSON is searched by bisection: the keys stand in their sorted order.
    writer.beginObject();
    writer.string("IID", interfaceId);
    writer.emptyObject("MetaData");
    writer.string("className", pluginClass);
    writer.boolean("debug", debugBuild);
    writer.number("version", qtVersion);
    writer.endObject();
    return writer;
}

constexpr std::size_t roomToMeasure = 1024;
constexpr std::size_t metadataSize = metadata<roomToMeasure>().size();

QT_PLUGIN_METADATA_SECTION
const std::array<char, metadataSize> pluginMetadata = metadata<metadataSize>().bytes();

} // namespace

#if defined(Q_OF_ELF)
// The reference makes the linker note the version of QtCore in the library's header.
extern "C" Q_DECL_IMPORT const char QT_MANGLE_NAMESPACE(qt_version_tag);

namespace {

struct VersionRecord
{
    const char *tag;
    quint32 version;
};

__attribute__((section(".qtversion"), used))
VersionRecord versionRecord = { &QT_MANGLE_NAMESPACE(qt_version_tag), qtVersion };

} // namespace
#endif

extern "C" Q_DECL_EXPORT const char *qt_plugin_query_metadata()
{
    return pluginMetadata.data();
}

extern "C" Q_DECL_EXPORT QObject *qt_plugin_instance()
{
    static QPointer<QObject> plugin;
    if (!plugin)
        plugin = new TavolinsPlugin;
    return plugin.data();
}
