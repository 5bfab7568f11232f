#include "plugin/elffile.h"
#include "support/testcase.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QLibrary>
#include <QtCore/QPluginLoader>
#include <QtTest/QtTest>

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

} // namespace

class tst_PluginMetadata : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void blockThroughTheFunction();
    void blockIsReadable();
    void loaderReportsTheMembers();
    void keysAreSorted();
#if defined(Q_OF_ELF)
    void blockIsInItsSection();
    void versionRecord();
#endif
};

namespace {

typedef const char *(*QueryMetadata)();

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

#endif

TAVOLINS_TEST_MAIN(tst_PluginMetadata)
#include "tst_pluginmetadata.moc"
