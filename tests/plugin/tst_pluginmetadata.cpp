#include "plugin/tavolinsplugin.h"
#include "support/testcase.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtCore/QPointer>
#include <QtQml/QQmlExtensionInterface>
#include <QtTest/QtTest>

#include <cstring>
#include <cxxabi.h>
#include <memory>

#if defined(Q_OF_ELF)
#include <elf.h>
#include <link.h>
#endif

namespace {

constexpr int qtVersion = 0x050602;

QString pluginFile()
{
    return QFile::decodeName(TAVOLINS_PLUGIN_FILE);
}

QJsonObject declaredMetadata()
{
    return { { QStringLiteral("IID"), QStringLiteral("com.mervo.tavolins.thememanager") },
             { QStringLiteral("MetaData"), QJsonObject() },
             { QStringLiteral("className"), QStringLiteral("TavolinsPlugin") },
             { QStringLiteral("debug"), TAVOLINS_DEBUG_BUILD == 1 },
             { QStringLiteral("version"), qtVersion } };
}

/// The block as it has to stand in the file. Qt's own writer of that form gives the measure.
QByteArray expectedBlock()
{
    return QByteArrayLiteral("QTMETADATA  ") + QJsonDocument(declaredMetadata()).toBinaryData();
}

#if defined(Q_OF_ELF)

QString demangled(const char *symbol)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
            abi::__cxa_demangle(symbol, nullptr, nullptr, &status), &std::free);
    return QString::fromLatin1(status == 0 ? name.get() : symbol);
}

/// Reads what the tests need of a shared library in this machine's own format.
class ElfFile
{
public:
    explicit ElfFile(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            m_content = file.readAll();
    }

    bool isValid() const
    {
        return m_content.size() > int(sizeof(ElfW(Ehdr)))
                && std::memcmp(m_content.constData(), ELFMAG, SELFMAG) == 0;
    }

    struct Section
    {
        ElfW(Shdr) header = {};
        QByteArray name;
        QByteArray content;
    };

    QList<Section> sections() const
    {
        const auto header = at<ElfW(Ehdr)>(m_content, 0);
        QList<Section> result;
        for (int i = 0; i < header.e_shnum; ++i) {
            Section section;
            section.header = at<ElfW(Shdr)>(m_content,
                                            header.e_shoff + std::size_t(i) * header.e_shentsize);
            if (section.header.sh_type != SHT_NOBITS) {
                section.content = m_content.mid(int(section.header.sh_offset),
                                                int(section.header.sh_size));
            }
            result.append(section);
        }
        const QByteArray names = result.at(header.e_shstrndx).content;
        for (Section &section : result)
            section.name = names.constData() + section.header.sh_name;
        return result;
    }

    Section section(const QByteArray &name) const
    {
        const auto all = sections();
        for (const Section &section : all) {
            if (section.name == name)
                return section;
        }
        return Section();
    }

    /// The functions and objects that the library offers, as they stand in the file.
    QList<QByteArray> exportedSymbols() const
    {
        const QByteArray names = section(".dynstr").content;
        QList<QByteArray> result;
        const QByteArray table = section(".dynsym").content;
        for (std::size_t i = 0; i < std::size_t(table.size()); i += sizeof(ElfW(Sym))) {
            const auto symbol = at<ElfW(Sym)>(table, i);
            // The macros for 32 and 64 bits do the same.
            const int type = ELF64_ST_TYPE(symbol.st_info);
            if (symbol.st_shndx != SHN_UNDEF && (type == STT_FUNC || type == STT_OBJECT))
                result.append(names.constData() + symbol.st_name);
        }
        return result;
    }

    /// The names of the symbols whose addresses the loader writes to \a address.
    QList<QByteArray> relocationsAt(ElfW(Addr) address) const
    {
        const QByteArray names = section(".dynstr").content;
        const QByteArray symbols = section(".dynsym").content;
        QList<QByteArray> result;
        const auto all = sections();
        for (const Section &section : all) {
            if (section.header.sh_type != SHT_RELA && section.header.sh_type != SHT_REL)
                continue;
            for (std::size_t i = 0; i < std::size_t(section.content.size());
                 i += section.header.sh_entsize) {
                // Both kinds begin with these two fields.
                const auto relocation = at<ElfW(Rel)>(section.content, i);
                if (relocation.r_offset != address)
                    continue;
                const std::size_t index = sizeof(void *) == 8
                        ? std::size_t(ELF64_R_SYM(relocation.r_info))
                        : std::size_t(ELF32_R_SYM(relocation.r_info));
                result.append(names.constData()
                              + at<ElfW(Sym)>(symbols, index * sizeof(ElfW(Sym))).st_name);
            }
        }
        return result;
    }

    QList<QByteArray> neededLibraries() const
    {
        const QByteArray names = section(".dynstr").content;
        const QByteArray table = section(".dynamic").content;
        QList<QByteArray> result;
        for (std::size_t i = 0; i < std::size_t(table.size()); i += sizeof(ElfW(Dyn))) {
            const auto entry = at<ElfW(Dyn)>(table, i);
            if (entry.d_tag == DT_NEEDED)
                result.append(names.constData() + entry.d_un.d_val);
        }
        return result;
    }

    template <typename Record>
    static Record at(const QByteArray &bytes, std::size_t offset)
    {
        Record record = {};
        if (offset + sizeof(Record) <= std::size_t(bytes.size()))
            std::memcpy(&record, bytes.constData() + offset, sizeof(Record));
        return record;
    }

private:
    QByteArray m_content;
};

#endif

} // namespace

class tst_PluginMetadata : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void blockThroughTheFunction();
    void blockIsReadable();
    void loaderReportsTheMembers();
    void keysAreSorted();
    void loaderGivesThePlugin();
    void entryFunctionsByName_data();
    void entryFunctionsByName();
    void instanceIsOne();
    void deletedInstanceIsReplaced();
    void pluginMetaObject();
#if defined(Q_OF_ELF)
    void blockIsInItsSection();
    void versionRecord();
    void exportedSymbols();
    void neededLibraries();
    void noIdentifierIsCompiledIn();
#endif
};

namespace {

typedef const char *(*QueryMetadata)();
typedef QObject *(*Instance)();

template <typename Function>
Function resolve(const char *name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(pluginFile(), name));
}

} // namespace

void tst_PluginMetadata::blockThroughTheFunction()
{
    const auto query = resolve<QueryMetadata>("qt_plugin_query_metadata");
    QVERIFY(query);
    const QByteArray expected = expectedBlock();
    QCOMPARE(QByteArray(query(), expected.size()), expected);
    QCOMPARE(query(), query());
}

void tst_PluginMetadata::blockIsReadable()
{
    const auto query = resolve<QueryMetadata>("qt_plugin_query_metadata");
    QVERIFY(query);
    const QByteArray document(query() + 12, expectedBlock().size() - 12);
    QCOMPARE(document.left(8), QByteArray("qbjs\1\0\0\0", 8));
    QCOMPARE(QJsonDocument::fromBinaryData(document, QJsonDocument::Validate).object(),
             declaredMetadata());
}

void tst_PluginMetadata::loaderReportsTheMembers()
{
    const QPluginLoader loader(pluginFile());
    QCOMPARE(loader.metaData(), declaredMetadata());
    QCOMPARE(loader.metaData().keys(),
             QStringList({ QStringLiteral("IID"), QStringLiteral("MetaData"),
                           QStringLiteral("className"), QStringLiteral("debug"),
                           QStringLiteral("version") }));
    QCOMPARE(loader.metaData().value(QStringLiteral("version")).toInt(), 329218);
}

void tst_PluginMetadata::keysAreSorted()
{
    const QByteArray block = expectedBlock();
    const auto query = resolve<QueryMetadata>("qt_plugin_query_metadata");
    QVERIFY(query);
    const QByteArray own(query(), block.size());
    int previous = 0;
    for (const char *key : { "IID", "MetaData", "className", "debug", "version" }) {
        const int position = own.indexOf(key, previous);
        QVERIFY2(position > previous, key);
        previous = position;
    }
}

void tst_PluginMetadata::loaderGivesThePlugin()
{
    QPluginLoader loader(pluginFile());
    QObject *plugin = loader.instance();
    QVERIFY2(plugin, qPrintable(loader.errorString()));
    QVERIFY(qobject_cast<TavolinsPlugin *>(plugin));
    QVERIFY(qobject_cast<QQmlExtensionInterface *>(plugin));
    QCOMPARE(plugin, resolve<Instance>("qt_plugin_instance")());
}

void tst_PluginMetadata::entryFunctionsByName_data()
{
    QTest::addColumn<bool>("exists");

    QTest::newRow("qt_plugin_instance") << true;
    QTest::newRow("qt_plugin_query_metadata") << true;
    QTest::newRow("qt_plugin_query_verification_data") << false;
}

void tst_PluginMetadata::entryFunctionsByName()
{
    QFETCH(const bool, exists);

    QCOMPARE(resolve<Instance>(QTest::currentDataTag()) != nullptr, exists);
}

void tst_PluginMetadata::instanceIsOne()
{
    const auto instance = resolve<Instance>("qt_plugin_instance");
    QVERIFY(instance);
    QObject *plugin = instance();
    QVERIFY(plugin);
    QCOMPARE(instance(), plugin);
    QVERIFY(!plugin->parent());
    QCOMPARE(plugin->metaObject(), &TavolinsPlugin::staticMetaObject);
}

void tst_PluginMetadata::deletedInstanceIsReplaced()
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

void tst_PluginMetadata::pluginMetaObject()
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

void tst_PluginMetadata::blockIsInItsSection()
{
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QByteArray content = file.section(".qtmetadata").content;
    const QByteArray expected = expectedBlock();
    QCOMPARE(content.left(expected.size()), expected);
    // Sanitizers pad what they watch; otherwise nothing else is there.
    QCOMPARE(QByteArray(content).replace('\0', "").size(),
             QByteArray(expected).replace('\0', "").size());
    QCOMPARE(content.count("QTMETADATA  "), 1);
}

void tst_PluginMetadata::versionRecord()
{
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const ElfFile::Section record = file.section(".qtversion");
    QVERIFY(record.content.size() >= int(2 * sizeof(void *)));
    QCOMPARE(file.relocationsAt(record.header.sh_addr), QList<QByteArray>({ "qt_version_tag" }));
    QCOMPARE(ElfFile::at<quint32>(record.content, sizeof(void *)), quint32(qtVersion));
}

void tst_PluginMetadata::exportedSymbols()
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
            "|^Q[A-Za-z]+::|^qt_plugin_instance$|^qt_plugin_query_metadata$"
            "|^((vtable|typeinfo|typeinfo name) for )?std::"));
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QList<QByteArray> symbols = file.exportedSymbols();
    for (const QByteArray &symbol : symbols) {
        const QString name = demangled(symbol);
        QVERIFY2(allowed.match(name).hasMatch(), qPrintable(name));
    }
    for (const char *entry : { "qt_plugin_instance", "qt_plugin_query_metadata" })
        QCOMPARE(symbols.count(entry), 1);
    QStringList readable;
    for (const QByteArray &symbol : symbols)
        readable.append(demangled(symbol));
    for (const char *type : { "Theme", "ThemePrivate", "ThemeObject", "ThemeObjectColors",
                              "ThemeObjectFonts", "ThemeManager", "TavolinsPlugin" }) {
        QVERIFY2(readable.contains(QLatin1String(type) + QLatin1String("::staticMetaObject")),
                 type);
    }
    for (const QString &name : qAsConst(readable))
        QVERIFY2(!name.contains(QLatin1String("DeferredDeletion")), qPrintable(name));
}

void tst_PluginMetadata::neededLibraries()
{
    const QRegularExpression allowed(QStringLiteral(
            "^lib(Qt5Core|Qt5Gui|Qt5Qml|stdc\\+\\+|c\\+\\+|c\\+\\+abi|gcc_s|c|m|pthread|dl)\\.so"
            "|^ld-linux"));
    const ElfFile file(pluginFile());
    QVERIFY(file.isValid());
    const QList<QByteArray> libraries = file.neededLibraries();
    for (const QByteArray &library : libraries)
        QVERIFY2(allowed.match(QString::fromLatin1(library)).hasMatch(), library.constData());
    for (const char *needed : { "libQt5Core.so.5", "libQt5Gui.so.5", "libQt5Qml.so.5" })
        QCOMPARE(libraries.count(needed), 1);
}

void tst_PluginMetadata::noIdentifierIsCompiledIn()
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

TAVOLINS_TEST_MAIN(tst_PluginMetadata)
#include "tst_pluginmetadata.moc"
