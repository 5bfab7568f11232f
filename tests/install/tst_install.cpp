#include "support/testcase.h"

#include <QtCore/QDirIterator>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

/// Installs the build into a folder of its own and uses it as somebody else would.
class tst_Install : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void filesAreInstalled_data();
    void filesAreInstalled();
    void nothingElseIsInHeaders();
    void typesAreDescribed_data();
    void typesAreDescribed();
    void descriptionNamesNoBuildPath();
    void packageAsksForThreeModulesOnly();
    void qmlRunsAgainstThePrefixAlone();
    void missingModuleIsNoticed();
    void nativeConsumerBuildsAndRuns();

private:
    QString installed(const QString &file) const;
    static QString moduleFolder();
    static QByteArray contentOf(const QString &path);
    int runQml(const QString &importPath, const QByteArray &code, QByteArray *output);

    QTemporaryDir m_prefix;
};

namespace {

/// Runs a program and returns its exit code, -1 if it crashed or never ended.
int run(const QString &program, const QStringList &arguments, QByteArray *output)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool finished = process.waitForFinished(200000);
    *output = process.readAll();
    return finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QByteArray importLine()
{
    return "import " TAVOLINS_QML_URI " 1.0\n";
}

} // namespace

QString tst_Install::installed(const QString &file) const
{
    return m_prefix.path() + QLatin1Char('/') + file;
}

QString tst_Install::moduleFolder()
{
    return QStringLiteral(TAVOLINS_QML_INSTALL_DIR "/")
            + QStringLiteral(TAVOLINS_QML_URI).replace(QLatin1Char('.'), QLatin1Char('/'));
}

QByteArray tst_Install::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

int tst_Install::runQml(const QString &importPath, const QByteArray &code, QByteArray *output)
{
    const QString file = write(QStringLiteral("main.qml"), code);
    return run(QStringLiteral(TAVOLINS_QMLRUN), { importPath, file }, output);
}

void tst_Install::initTestCase()
{
    QVERIFY(m_prefix.isValid());
    QByteArray output;
    QVERIFY2(run(QStringLiteral(TAVOLINS_CMAKE),
                 { QStringLiteral("--install"), QStringLiteral(TAVOLINS_BUILD_DIR),
                   QStringLiteral("--prefix"), m_prefix.path() },
                 &output)
                     == 0,
             output.constData());
}

void tst_Install::filesAreInstalled_data()
{
    QTest::addColumn<QString>("file");
    const QString module = moduleFolder();
    const QStringList files = {
        module + QStringLiteral("/libtavolins.so"),
        module + QStringLiteral("/qmldir"),
        module + QStringLiteral("/plugins.qmltypes"),
        QStringLiteral("include/tavolins/manager/thememanager.h"),
        QStringLiteral("include/tavolins/plugin/tavolinsplugin.h"),
        QStringLiteral("include/tavolins/theme/theme.h"),
        QStringLiteral("include/tavolins/theme/themeprivate.h"),
        QStringLiteral("include/tavolins/values/tavolinsexport.h"),
        QStringLiteral("include/tavolins/values/themeobject.h"),
        QStringLiteral("include/tavolins/values/themeobjectcolors.h"),
        QStringLiteral("include/tavolins/values/themeobjectfonts.h"),
    };
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << file;
}

void tst_Install::filesAreInstalled()
{
    QFETCH(QString, file);
    const QFileInfo info(installed(file));
    QVERIFY(info.isFile());
    QVERIFY(info.size() > 0);
}

void tst_Install::nothingElseIsInHeaders()
{
    QStringList private_;
    QDirIterator headers(installed(QStringLiteral("include")), QDir::Files,
                         QDirIterator::Subdirectories);
    int count = 0;
    while (headers.hasNext()) {
        const QByteArray text = contentOf(headers.next());
        ++count;
        if (text.contains("private/q") || text.contains("_p.h"))
            private_.append(headers.fileName());
    }
    QCOMPARE(private_, QStringList());
    QCOMPARE(count, 8);
}

void tst_Install::typesAreDescribed_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("mentions");
    QTest::newRow("Theme") << QStringLiteral("Theme")
                           << QStringList{ QStringLiteral("name: \"classnames\""),
                                           QStringLiteral("name: \"getStyle\""),
                                           QStringLiteral("/Theme 1.0") };
    QTest::newRow("ThemeManager") << QStringLiteral("ThemeManager")
                                  << QStringList{ QStringLiteral("name: \"currentIndex\""),
                                                  QStringLiteral("name: \"loadThemes\""),
                                                  QStringLiteral("isSingleton: true") };
    QTest::newRow("ThemeObject") << QStringLiteral("ThemeObject") << QStringList();
    QTest::newRow("ThemeObjectColors")
            << QStringLiteral("ThemeObjectColors")
            << QStringList{ QStringLiteral("name: \"foreground\""),
                            QStringLiteral("name: \"lighterForeground\""),
                            QStringLiteral("name: \"darkerForeground\""),
                            QStringLiteral("name: \"background\""),
                            QStringLiteral("name: \"lighterBackground\""),
                            QStringLiteral("name: \"darkerBackground\""),
                            QStringLiteral("name: \"selection\"") };
    QTest::newRow("ThemeObjectFonts") << QStringLiteral("ThemeObjectFonts")
                                      << QStringList{ QStringLiteral("name: \"mainFont\""),
                                                      QStringLiteral("name: \"alternateFont\""),
                                                      QStringLiteral("name: \"h1Font\""),
                                                      QStringLiteral("name: \"h2Font\""),
                                                      QStringLiteral("name: \"h3Font\""),
                                                      QStringLiteral("name: \"h4Font\""),
                                                      QStringLiteral("name: \"fontFactor\"") };
}

void tst_Install::typesAreDescribed()
{
    QFETCH(QString, type);
    QFETCH(QStringList, mentions);
    const QString types = QString::fromUtf8(
            contentOf(installed(moduleFolder() + QStringLiteral("/plugins.qmltypes"))));
    const QStringList components = types.split(QStringLiteral("    Component {"));
    const QString name = QStringLiteral("name: \"%1\"").arg(type);
    int found = 0;
    for (const QString &component : components) {
        if (!component.trimmed().startsWith(name))
            continue;
        ++found;
        for (const QString &mention : mentions)
            QVERIFY2(component.contains(mention), qPrintable(mention));
    }
    QCOMPARE(found, 1);
}

void tst_Install::descriptionNamesNoBuildPath()
{
    const QByteArray types = contentOf(
            installed(moduleFolder() + QStringLiteral("/plugins.qmltypes")));
    QVERIFY(!types.isEmpty());
    QVERIFY(!types.contains(TAVOLINS_BUILD_DIR));
}

void tst_Install::packageAsksForThreeModulesOnly()
{
    const QDir package(installed(QStringLiteral(TAVOLINS_QML_INSTALL_DIR "/../../cmake/Tavolins")));
    QVERIFY(package.exists());
    QSet<QString> modules;
    const QRegularExpression imported(QStringLiteral("Qt5::(\\w+)"));
    const QFileInfoList files = package.entryInfoList({ QStringLiteral("*.cmake") });
    for (const QFileInfo &file : files) {
        const QString text = QString::fromUtf8(contentOf(file.filePath()));
        for (auto i = imported.globalMatch(text); i.hasNext();)
            modules.insert(i.next().captured(1));
    }
    QCOMPARE(modules,
             (QSet<QString>{ QStringLiteral("Core"), QStringLiteral("Gui"),
                             QStringLiteral("Qml") }));
    const QByteArray config = contentOf(package.filePath(QStringLiteral("TavolinsConfig.cmake")));
    QVERIFY(config.contains("find_dependency(Qt5 5.6 COMPONENTS Core Gui Qml)"));
}

void tst_Install::qmlRunsAgainstThePrefixAlone()
{
    QByteArray output;
    const int exitCode = runQml(
            installed(QStringLiteral(TAVOLINS_QML_INSTALL_DIR)),
            importLine()
                    + "import QtQml 2.12\n"
                      "QtObject {\n"
                      "    id: root\n"
                      "    Theme.classnames: 'a b'\n"
                      "    property Timer quit: Timer {\n"
                      "        running: true; interval: 0\n"
                      "        onTriggered: Qt.exit(ThemeManager.rowCount() === 0\n"
                      "            && root.Theme.hasClassname('b') ? 42 : 1)\n"
                      "    }\n"
                      "}\n",
            &output);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, 42);
}

void tst_Install::missingModuleIsNoticed()
{
    // The same without the prefix, so that the test above can't pass by another copy.
    QByteArray output;
    QCOMPARE(runQml(folder(), importLine() + "Theme {}\n", &output), 3);
    QVERIFY2(output.contains("is not installed"), output.constData());
}

void tst_Install::nativeConsumerBuildsAndRuns()
{
    const QString build = folder() + QStringLiteral("/build");
    const QString cmake = QStringLiteral(TAVOLINS_CMAKE);
    QByteArray output;
    QVERIFY2(run(cmake,
                 { QStringLiteral("-S"), QStringLiteral(TAVOLINS_CONSUMER_DIR),
                   QStringLiteral("-B"), build, QStringLiteral("-G"), QStringLiteral("Ninja"),
                   QStringLiteral("-DCMAKE_CXX_COMPILER=" TAVOLINS_CXX_COMPILER),
                   QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_prefix.path() },
                 &output)
                     == 0,
             output.constData());
    QVERIFY2(run(cmake, { QStringLiteral("--build"), build }, &output) == 0, output.constData());
    const QString file = write(QStringLiteral("main.qml"),
                               importLine()
                                       + "import QtQml 2.12\n"
                                         "Timer {\n"
                                         "    running: true; interval: 0\n"
                                         "    onTriggered: Qt.exit(40 + ThemeManager.rowCount())\n"
                                         "}\n");
    const int exitCode = run(build + QStringLiteral("/consumer"), { file }, &output);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, 41);
}

QTEST_GUILESS_MAIN(tst_Install)
#include "tst_install.moc"
