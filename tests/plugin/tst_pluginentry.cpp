#include "plugin/elffile.h"
#include "plugin/tavolinsplugin.h"
#include "support/testcase.h"

#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtCore/QPointer>
#include <QtCore/QRegularExpression>
#include <QtQml/QQmlExtensionInterface>
#include <QtTest/QtTest>

#include <cxxabi.h>
#include <memory>

namespace {

typedef QObject *(*Instance)();

const bool isQt5 = QT_VERSION_MAJOR == 5;
const char *const queryFunction = isQt5 ? "qt_plugin_query_metadata"
                                        : "qt_plugin_query_metadata_v2";

QString pluginFile()
{
    return QFile::decodeName(TAVOLINS_PLUGIN_FILE);
}

template <typename Function>
Function resolve(const char *name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(pluginFile(), name));
}

#if defined(Q_OF_ELF)

QString demangled(const char *symbol)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
            abi::__cxa_demangle(symbol, nullptr, nullptr, &status), &std::free);
    return QString::fromLatin1(status == 0 ? name.get() : symbol);
}

#endif

} // namespace

/// What a loader of this series of Qt finds in the file, and what the file shows and needs.
class tst_PluginEntry : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void loaderReportsTheMembers();
    void loaderGivesThePlugin();
    void entryFunctionsByName_data();
    void entryFunctionsByName();
    void instanceIsOne();
    void deletedInstanceIsReplaced();
    void pluginMetaObject();
#if defined(Q_OF_ELF)
    void exportedSymbols();
    void neededLibraries();
    void noIdentifierIsCompiledIn();
#endif
};

void tst_PluginEntry::loaderReportsTheMembers()
{
    const QPluginLoader loader(pluginFile());
    const QJsonObject metadata = loader.metaData();
    QCOMPARE(metadata.value(QStringLiteral("IID")).toString(),
             QStringLiteral("com.mervo.tavolins.thememanager"));
    QCOMPARE(metadata.value(QStringLiteral("className")).toString(),
             QStringLiteral("TavolinsPlugin"));
    QCOMPARE(metadata.value(QStringLiteral("debug")).toBool(), TAVOLINS_DEBUG_BUILD == 1);
}

void tst_PluginEntry::loaderGivesThePlugin()
{
    QPluginLoader loader(pluginFile());
    QObject *plugin = loader.instance();
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QVERIFY(qobject_cast<TavolinsPlugin *>(plugin));
    QVERIFY(qobject_cast<QQmlExtensionInterface *>(plugin));
    QCOMPARE(plugin, resolve<Instance>("qt_plugin_instance")());
}

void tst_PluginEntry::entryFunctionsByName_data()
{
    QTest::addColumn<bool>("exists");

    QTest::newRow("qt_plugin_instance") << true;
    QTest::newRow("qt_plugin_query_metadata") << isQt5;
    QTest::newRow("qt_plugin_query_metadata_v2") << !isQt5;
    QTest::newRow("qt_plugin_query_verification_data") << false;
}

void tst_PluginEntry::entryFunctionsByName()
{
    QFETCH(const bool, exists);

    QCOMPARE(resolve<Instance>(QTest::currentDataTag()) != nullptr, exists);
}

void tst_PluginEntry::instanceIsOne()
{
    const auto instance = resolve<Instance>("qt_plugin_instance");
    QVERIFY(instance);
    QObject *plugin = instance();
    QVERIFY(plugin);
    QCOMPARE(instance(), plugin);
    QVERIFY(!plugin->parent());
    QVERIFY(plugin->metaObject()->inherits(&TavolinsPlugin::staticMetaObject));
}

void tst_PluginEntry::deletedInstanceIsReplaced()
{
    const auto instance = resolve<Instance>("qt_plugin_instance");
    QVERIFY(instance);
    const QPointer<QObject> first(instance());
    delete first;
    QVERIFY(!first);
    const QPointer<QObject> second(instance());
    QVERIFY(qobject_cast<TavolinsPlugin *>(second));
    QCOMPARE(instance(), second.data());
}

void tst_PluginEntry::pluginMetaObject()
{
    const QMetaObject &type = TavolinsPlugin::staticMetaObject;
    QCOMPARE(type.className(), "TavolinsPlugin");
    QCOMPARE(type.superClass(), &QQmlExtensionPlugin::staticMetaObject);
    QCOMPARE(type.propertyCount(), type.propertyOffset());
    QCOMPARE(type.methodCount(), type.methodOffset());
    QCOMPARE(type.enumeratorCount(), type.enumeratorOffset());
    QCOMPARE(type.classInfoCount(), type.classInfoOffset());
    QCOMPARE(type.constructorCount(), 0);
}

#if defined(Q_OF_ELF)

void tst_PluginEntry::exportedSymbols()
{
#if defined(TAVOLINS_SANITIZED)
    QSKIP("sanitizers export types of their own");
#endif
    // Classes first: their members, and what the compiler makes for them. Inline functions of Qt's
    // classes come along in builds that do not inline them, as do the standard library's templates.
    const QRegularExpression allowed(QStringLiteral(
            "^((vtable|typeinfo|typeinfo name) for |non-virtual thunk to )?"
            "(Theme|ThemePrivate|ThemeObject|ThemeObjectColors|ThemeObjectFonts|ThemeManager|"
            "TavolinsPlugin)(::.*)?$"
            "|^Q[A-Za-z]+::|^qt_plugin_instance$|^qt_plugin_query_metadata(_v2)?$"
            "|^((vtable|typeinfo|typeinfo name) for )?std::"));
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QList<QByteArray> symbols = file.exportedSymbols();
    for (const QByteArray &symbol : symbols) {
        const QString name = demangled(symbol);
        QVERIFY2(allowed.match(name).hasMatch(), qPrintable(name));
    }
    for (const char *entry : { "qt_plugin_instance", queryFunction })
        QCOMPARE(symbols.count(entry), 1);
    QStringList readable;
    for (const QByteArray &symbol : symbols)
        readable.append(demangled(symbol));
    for (const char *type : { "Theme", "ThemePrivate", "ThemeObject", "ThemeObjectColors",
                              "ThemeObjectFonts", "ThemeManager", "TavolinsPlugin" }) {
        QVERIFY2(readable.contains(QLatin1String(type) + QLatin1String("::staticMetaObject")),
                 type);
    }
    for (const QString &name : std::as_const(readable))
        QVERIFY2(!name.contains(QLatin1String("DeferredDeletion")), qPrintable(name));
}

void tst_PluginEntry::neededLibraries()
{
    const QRegularExpression allowed(QStringLiteral(
            "^lib(Qt[56](Core|Gui|Qml)|stdc\\+\\+|c\\+\\+|c\\+\\+abi|gcc_s|c|m|pthread|dl)\\.so"
            "|^ld-linux"));
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QList<QByteArray> libraries = file.neededLibraries();
    for (const QByteArray &library : libraries)
        QVERIFY2(allowed.match(QString::fromLatin1(library)).hasMatch(), library.constData());
    for (const char *module : { "Core", "Gui", "Qml" }) {
        const QByteArray series = QByteArray::number(QT_VERSION_MAJOR);
        const QByteArray needed = "libQt" + series + module + ".so." + series;
        QVERIFY2(libraries.count(needed) == 1, needed.constData());
    }
}

void tst_PluginEntry::noIdentifierIsCompiledIn()
{
    // The module's name is the importing side's choice: the file knows its types' names only.
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QByteArray constants = file.section(".rodata").content;
    QVERIFY(constants.contains(QByteArray("\0Theme\0", 7)));
    QVERIFY(!constants.contains(
            QByteArray("\0" TAVOLINS_QML_URI "\0", sizeof TAVOLINS_QML_URI + 1)));
}

#endif

TAVOLINS_TEST_MAIN(tst_PluginEntry)
#include "tst_pluginentry.moc"
