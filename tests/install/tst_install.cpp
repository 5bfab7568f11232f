#include "support/testcase.h"

#include <QtCore/QDirIterator>
#include <QtCore/QLibraryInfo>
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
    void lintKnowsTheTypes();
    void descriptionNamesNoBuildPath();
    void packageAsksForThreeModulesOnly();
    void commandRunsFromThePrefixAlone();
    void commandGoesByItsInstalledName_data();
    void commandGoesByItsInstalledName();
    void shellCompletesTheInstalledName();
    void qmlRunsAgainstThePrefixAlone();
    void missingModuleIsNoticed();
    void controlsStyleIsFoundByName();
    void nativeConsumerBuildsAndRuns();
    void installationTellsWhetherQtLooksThere();
    void configurationTellsWhetherQtLooksThere_data();
    void configurationTellsWhetherQtLooksThere();
    void subprojectBuildsRunsAndInstalls();
    void subprojectThatIsExcludedIsNotInstalled();
    void projectOfTheOtherQtIsTold_data();
    void projectOfTheOtherQtIsTold();
    void bothSeriesSideBySide();
    void projectGetsTheOneForItsQt_data();
    void projectGetsTheOneForItsQt();
    void partIsBuiltWithTheQtOfItsProject_data();
    void partIsBuiltWithTheQtOfItsProject();
    void buildTreeChangesItsQt();

private:
    QString installed(const QString &file) const;
    static QString moduleFolder();
    static QByteArray contentOf(const QString &path);
    int runQml(const QString &importPath, const QByteArray &code, QByteArray *output);
    int configureWritten(const QStringList &options, QByteArray *output);
    void checkControls(const QString &qmlFolder, const QByteArray &uri);

    QTemporaryDir m_prefix;
    QTemporaryDir m_both;
    QByteArray m_installOutput;
};

namespace {

const int bundledThemes = 5;

/// Whether \a output, of configuring, tells that the Qt of the series \a qt is built with.
bool isBuiltWith(int qt, const QByteArray &output)
{
    return output.contains("Tavolins: built with Qt " + QByteArray::number(qt) + '.');
}

/// Runs a program and returns its exit code, -1 if it crashed or never ended.
int run(const QString &program, const QStringList &arguments, QByteArray *output,
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool finished = process.waitForFinished(600000);
    *output = process.readAll();
    return finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

/// What a project may write before it asks for the plugin, and the Qt that it is to get then.
void addWaysToChooseQt()
{
    QTest::addColumn<QByteArray>("beforeIt");
    QTest::addColumn<int>("expected");
    QTest::newRow("Qt 5 found") << QByteArray("find_package(Qt5 REQUIRED COMPONENTS Core)\n") << 5;
    QTest::newRow("Qt 6 found") << QByteArray("find_package(Qt6 REQUIRED COMPONENTS Core)\n") << 6;
    QTest::newRow("Qt 5 chosen") << QByteArray(
            "find_package(QT NAMES Qt5 REQUIRED COMPONENTS Core)\n")
                                 << 5;
    QTest::newRow("Qt 6 chosen") << QByteArray(
            "find_package(QT NAMES Qt6 Qt5 REQUIRED COMPONENTS Core)\n")
                                 << 6;
    QTest::newRow("Qt 6 by default") << QByteArray("set(QT_DEFAULT_MAJOR_VERSION 6)\n") << 6;
    QTest::newRow("told 6") << QByteArray("set(TAVOLINS_QT_MAJOR 6)\n") << 6;
    QTest::newRow("nothing known") << QByteArray() << 5;
}

int runCMake(const QStringList &arguments, QByteArray *output,
             const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    return run(QStringLiteral(TAVOLINS_CMAKE), arguments, output, environment);
}

/// Configures the project in \a source with the compiler of this build, and a Qt of the series \a
/// qt.
int configure(const QString &source, const QString &build, const QStringList &options,
              QByteArray *output, int qt = QT_VERSION_MAJOR)
{
    return runCMake(
            QStringList{ QStringLiteral("-S"), source, QStringLiteral("-B"), build,
                         QStringLiteral("-GNinja"),
                         QStringLiteral("-DTAVOLINS_QT_MAJOR=%1").arg(qt),
                         QStringLiteral("-DCMAKE_CXX_COMPILER=" TAVOLINS_CXX_COMPILER),
                         QStringLiteral(
                                 "-DCMAKE_CXX_COMPILER_LAUNCHER=" TAVOLINS_CXX_COMPILER_LAUNCHER) }
                    + options,
            output);
}

QString testSource(const QString &folder)
{
    return QStringLiteral(TAVOLINS_SOURCE_DIR "/tests/install/") + folder;
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
const QString qtPrefix = QLibraryInfo::path(QLibraryInfo::PrefixPath);
const QString whereQtLooks = QLibraryInfo::path(QLibraryInfo::QmlImportsPath);
#else
const QString qtPrefix = QLibraryInfo::location(QLibraryInfo::PrefixPath);
const QString whereQtLooks = QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath);
#endif

/// What is said of a module in \a folder, in which Qt does not look.
QByteArray warningOf(const QString &folder, const QString &advice)
{
    return QStringLiteral("the QML module goes to %1, where Qt does not look (it looks in %2): run "
                          "applications with QML2_IMPORT_PATH=%1, let them call "
                          "QQmlEngine::addImportPath, or install with %3\n")
            .arg(folder, whereQtLooks, advice)
            .toUtf8();
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

/// Configures the project whose CMakeLists.txt the test has written into its folder.
int tst_Install::configureWritten(const QStringList &options, QByteArray *output)
{
    return runCMake(QStringList{ QStringLiteral("-S"), folder(), QStringLiteral("-B"),
                                 folder() + QStringLiteral("/build"), QStringLiteral("-GNinja") }
                            + options,
                    output);
}

/// Whether the style below \a qmlFolder is found by its name and follows the module \a uri.
void tst_Install::checkControls(const QString &qmlFolder, const QByteArray &uri)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QML2_IMPORT_PATH"), qmlFolder);
    environment.insert(QStringLiteral("QT_QUICK_CONTROLS_STYLE"), QStringLiteral("Tavolins"));
    const QString file = write(
            QStringLiteral("controls.qml"),
            "import QtQuick 2.15\nimport QtQuick.Controls 2.15\nimport " + uri
                    + " 1.0\n"
                      "ApplicationWindow {\n"
                      "    id: window\n"
                      "    Button { id: button }\n"
                      "    Timer {\n"
                      "        running: true; interval: 0\n"
                      "        onTriggered: Qt.exit('__ground' in button\n"
                      "            && Qt.colorEqual(button.background.color,\n"
                      "                window.Theme.colors.lighterBackground)\n"
                      "            && Qt.colorEqual(window.color,\n"
                      "                window.Theme.colors.background) ? 42 : 1)\n"
                      "    }\n"
                      "}\n");
    QByteArray output;
    const int exitCode = run(QStringLiteral(TAVOLINS_QMLRUN), { qmlFolder, file }, &output,
                             environment);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, 42);
}

void tst_Install::initTestCase()
{
    QVERIFY(m_prefix.isValid());
    QVERIFY2(runCMake({ QStringLiteral("--install"), QStringLiteral(TAVOLINS_BUILD_DIR),
                        QStringLiteral("--prefix"), m_prefix.path() },
                      &m_installOutput)
                     == 0,
             m_installOutput.constData());
}

void tst_Install::filesAreInstalled_data()
{
    QTest::addColumn<QString>("file");
    const QString module = moduleFolder();
    QStringList files = {
        module + QStringLiteral("/libtavolins.so"),
        module + QStringLiteral("/qmldir"),
        module + QStringLiteral("/plugins.qmltypes"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/manager/thememanager.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/plugin/tavolinsplugin.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/theme/theme.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/theme/themeprivate.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/values/tavolinsexport.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/values/themeobject.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/values/themeobjectcolors.h"),
        QStringLiteral("include/tavolins" TAVOLINS_QT_SUFFIX "/values/themeobjectfonts.h"),
        QStringLiteral("share/tavolins" TAVOLINS_QT_SUFFIX "/themes/daylight.thm"),
        QStringLiteral("share/tavolins" TAVOLINS_QT_SUFFIX "/themes/styles/Button_danger.qml"),
    };
    if (TAVOLINS_HAS_TOOL) {
        files += {
            QStringLiteral("bin/tavolins" TAVOLINS_QT_SUFFIX),
            QStringLiteral("share/man/man1/tavolins" TAVOLINS_QT_SUFFIX ".1"),
            QStringLiteral("share/bash-completion/completions/tavolins" TAVOLINS_QT_SUFFIX),
            QStringLiteral("share/zsh/site-functions/_tavolins" TAVOLINS_QT_SUFFIX),
            QStringLiteral("share/fish/vendor_completions.d/tavolins" TAVOLINS_QT_SUFFIX ".fish"),
        };
    }
    for (const QString &file : qAsConst(files))
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
    const QRegularExpression named(
            QStringLiteral("^\\s*(file: \"\\w+\\.h\"\\s+)?name: \"%1\"").arg(type));
    int found = 0;
    for (const QString &component : components) {
        if (!named.match(component).hasMatch())
            continue;
        ++found;
        for (const QString &mention : mentions)
            QVERIFY2(component.contains(mention), qPrintable(mention));
    }
    QCOMPARE(found, 1);
}

void tst_Install::lintKnowsTheTypes()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QSKIP("qmllint of Qt 5 checks nothing but the language");
#else
    const QString program = QLibraryInfo::path(QLibraryInfo::BinariesPath)
            + QStringLiteral("/qmllint");
    const auto lint = [&](const QByteArray &color, QByteArray *output) {
        const QString file = write(
                QStringLiteral("Looked.qml"),
                "import QtQuick\n" + importLine()
                        + "Rectangle {\n"
                          "    id: root\n"
                          "    Theme.classnames: \"header\"\n"
                          "    radius: Theme.radius\n"
                          "    Theme.onTitleChanged: ThemeManager.currentIndex = 1\n"
                          "    color: "
                        + color + "\n}\n");
        return run(
                program,
                { QStringLiteral("-I"), installed(QStringLiteral(TAVOLINS_QML_INSTALL_DIR)), file },
                output);
    };
    QByteArray output;
    QVERIFY2(lint("Theme.colors.background", &output) == 0, output.constData());
    QCOMPARE(output, QByteArray());
    lint("Theme.colors.backgruond", &output);
    QVERIFY2(output.contains("\"backgruond\" not found on type \"ThemeObjectColors\""),
             output.constData());
    lint("ThemeManager.curent ? \"red\" : \"blue\"", &output);
    QVERIFY2(output.contains("\"curent\" not found"), output.constData());
#endif
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
    const QDir package(
            installed(QStringLiteral(TAVOLINS_LIBRARY_DIR "/cmake/Tavolins" TAVOLINS_QT_SUFFIX)));
    QVERIFY(package.exists());
    QSet<QString> modules;
    const QRegularExpression imported(QStringLiteral("Qt[56]::(\\w+)"));
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
    QVERIFY(config.contains(QT_VERSION_MAJOR == 5
                                    ? "find_dependency(Qt5 5.6 COMPONENTS Core Gui Qml)"
                                    : "find_dependency(Qt6 6.4 COMPONENTS Core Gui Qml)"));
}

/// The styles of the bundled themes import the module, which the command finds by itself.
void tst_Install::commandRunsFromThePrefixAlone()
{
    if (!TAVOLINS_HAS_TOOL)
        QSKIP("built without the command");
    QByteArray output;
    const int exitCode = run(
            installed(QStringLiteral("bin/tavolins" TAVOLINS_QT_SUFFIX)),
            { QStringLiteral("check"),
              installed(QStringLiteral("share/tavolins" TAVOLINS_QT_SUFFIX "/themes")) },
            &output);
    QCOMPARE(output, QByteArray("5 themes: no problem\n"));
    QCOMPARE(exitCode, 0);
}

void tst_Install::commandGoesByItsInstalledName_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("beginning");
    const QByteArray name("tavolins" TAVOLINS_QT_SUFFIX);
    QTest::newRow("manual") << QStringLiteral("share/man/man1/tavolins" TAVOLINS_QT_SUFFIX ".1")
                            << ".TH " + name.toUpper() + " 1 \"\" \"Tavolins\" \"User Commands\"\n"
                    + ".SH NAME\n" + name + " ";
    QTest::newRow("zsh") << QStringLiteral("share/zsh/site-functions/_tavolins" TAVOLINS_QT_SUFFIX)
                         << "#compdef " + name + "\n";
    QTest::newRow("fish") << QStringLiteral(
            "share/fish/vendor_completions.d/tavolins" TAVOLINS_QT_SUFFIX ".fish")
                          << "# Completion of " + name + " for fish.\n";
}

void tst_Install::commandGoesByItsInstalledName()
{
    if (!TAVOLINS_HAS_TOOL)
        QSKIP("built without the command");
    QFETCH(QString, file);
    QFETCH(QByteArray, beginning);
    const QByteArray text = contentOf(installed(file));
    QCOMPARE(text.left(beginning.size()), beginning);
    // The name of the other Qt's command is nowhere.
    static const QRegularExpression names(QStringLiteral("tavolins[0-9]*"));
    const QString content = QString::fromUtf8(text);
    int count = 0;
    for (auto i = names.globalMatch(content); i.hasNext(); ++count)
        QCOMPARE(i.next().captured(), QStringLiteral("tavolins" TAVOLINS_QT_SUFFIX));
    QVERIFY(count > 1);
}

/// What bash proposes behind the installed command, and asks that command for.
void tst_Install::shellCompletesTheInstalledName()
{
    if (!TAVOLINS_HAS_TOOL)
        QSKIP("built without the command");
    const QString name = QStringLiteral("tavolins" TAVOLINS_QT_SUFFIX);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       installed(QStringLiteral("bin")) + QStringLiteral(":/usr/bin:/bin"));
    QByteArray output;
    const int exitCode = run(
            QStringLiteral("bash"),
            { QStringLiteral("-c"),
              QStringLiteral(
                      "source %1 && function=$(complete -p %2 | sed 's/.*-F "
                      "\\([^ ]*\\).*/\\1/') && COMP_WORDS=(%2 explain alpha-l) && COMP_CWORD=2 "
                      "&& $function && echo \"${COMPREPLY[@]}\"")
                      .arg(installed(QStringLiteral("share/bash-completion/completions/") + name),
                           name) },
            &output, environment);
    QCOMPARE(output, QByteArray("alpha-last\n"));
    QCOMPARE(exitCode, 0);
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

void tst_Install::controlsStyleIsFoundByName()
{
    if (!TAVOLINS_HAS_CONTROLS)
        QSKIP("built without it");
    checkControls(installed(QStringLiteral(TAVOLINS_QML_INSTALL_DIR)), TAVOLINS_QML_URI);
    checkControls(QStringLiteral(TAVOLINS_BUILD_DIR "/qml"), TAVOLINS_QML_URI);
}

void tst_Install::missingModuleIsNoticed()
{
    // The same without the prefix, so that the test above can't pass by another copy.
    if (QFileInfo::exists(
                whereQtLooks
                + QStringLiteral("/" TAVOLINS_QML_URI).replace(QLatin1Char('.'), QLatin1Char('/'))))
        QSKIP("the module is installed where Qt looks");
    QByteArray output;
    QCOMPARE(runQml(folder(), importLine() + "Theme {}\n", &output), 3);
    QVERIFY2(output.contains("is not installed"), output.constData());
}

void tst_Install::nativeConsumerBuildsAndRuns()
{
    const QString build = folder() + QStringLiteral("/build");
    QByteArray output;
    QVERIFY2(configure(testSource(QStringLiteral("consumer")), build,
                       { QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_prefix.path() }, &output)
                     == 0,
             output.constData());
    QVERIFY2(runCMake({ QStringLiteral("--build"), build }, &output) == 0, output.constData());
    const int exitCode = run(build + QStringLiteral("/consumer"), {}, &output);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, bundledThemes);
}

void tst_Install::installationTellsWhetherQtLooksThere()
{
    QVERIFY2(m_installOutput.contains("the QML module goes to "
                                      + installed(QStringLiteral(TAVOLINS_QML_INSTALL_DIR)).toUtf8()
                                      + ", where Qt does not look"),
             m_installOutput.constData());
}

void tst_Install::configurationTellsWhetherQtLooksThere_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("line");
    const QString layout = QDir(qtPrefix).relativeFilePath(whereQtLooks);
    QTest::newRow("another prefix")
            << QStringList{ QStringLiteral("-DCMAKE_INSTALL_PREFIX=/nowhere") }
            << warningOf(QStringLiteral("/nowhere/") + layout,
                         QStringLiteral("the prefix ") + qtPrefix);
    QTest::newRow("the prefix of Qt")
            << QStringList{ QStringLiteral("-DCMAKE_INSTALL_PREFIX=") + qtPrefix }
            << QByteArray("the QML module goes to " + whereQtLooks.toUtf8() + ", where Qt looks\n");
    QTest::newRow("another folder")
            << QStringList{ QStringLiteral("-DCMAKE_INSTALL_PREFIX=/nowhere"),
                            QStringLiteral("-DTAVOLINS_QML_INSTALL_DIR=share/modules") }
            << warningOf(QStringLiteral("/nowhere/share/modules"),
                         QStringLiteral("TAVOLINS_QML_INSTALL_DIR=") + whereQtLooks);
    QTest::newRow("the folder of Qt, not below the prefix")
            << QStringList{ QStringLiteral("-DCMAKE_INSTALL_PREFIX=/nowhere"),
                            QStringLiteral("-DTAVOLINS_QML_INSTALL_DIR=") + whereQtLooks }
            << QByteArray("the QML module goes to " + whereQtLooks.toUtf8() + ", where Qt looks\n");
}

void tst_Install::configurationTellsWhetherQtLooksThere()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, line);
    options += { QStringLiteral("-DTAVOLINS_BUILD_TESTS=OFF"),
                 QStringLiteral("-DTAVOLINS_BUILD_GALLERY=OFF") };
    QByteArray output;
    QVERIFY2(configure(QStringLiteral(TAVOLINS_SOURCE_DIR), folder() + QStringLiteral("/build"),
                       options, &output)
                     == 0,
             output.constData());
    QVERIFY2(output.contains(line), output.constData());
}

void tst_Install::subprojectBuildsRunsAndInstalls()
{
    const QString build = folder() + QStringLiteral("/build");
    QByteArray output;
    QVERIFY2(
            configure(testSource(QStringLiteral("subproject")), build,
                      { QStringLiteral("-DTAVOLINS_SOURCE=" TAVOLINS_SOURCE_DIR),
                        QStringLiteral("-DTAVOLINS_BUILD_CONTROLS=%1").arg(TAVOLINS_HAS_CONTROLS) },
                      &output)
                    == 0,
            output.constData());
    QVERIFY2(runCMake({ QStringLiteral("--build"), build }, &output) == 0, output.constData());
    const int exitCode = run(build + QStringLiteral("/consumer"), {}, &output);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, bundledThemes);

    // With the prefix of Qt instead of the configured one, the module is where Qt looks. The
    // gallery is off in a subproject; the themes are not part of it.
    const QString root = folder() + QStringLiteral("/root");
    QProcessEnvironment staged = QProcessEnvironment::systemEnvironment();
    staged.insert(QStringLiteral("DESTDIR"), root);
    QVERIFY2(runCMake({ QStringLiteral("--install"), build, QStringLiteral("--prefix"), qtPrefix },
                      &output, staged)
                     == 0,
             output.constData());
    QVERIFY2(output.contains("the QML module goes to " + whereQtLooks.toUtf8()
                             + ", where Qt looks\n"),
             output.constData());
    QVERIFY(QFileInfo::exists(root + whereQtLooks + QStringLiteral("/Acme/Theming/qmldir")));
    const QString themes = root + qtPrefix
            + QStringLiteral("/share/tavolins" TAVOLINS_QT_SUFFIX "/themes");
    QVERIFY(QFileInfo::exists(themes + QStringLiteral("/moss.thm")));
    QVERIFY(contentOf(themes + QStringLiteral("/styles/Card.qml"))
                    .contains("import Acme.Theming 1.0\n"));
    QVERIFY(!QFileInfo::exists(root + qtPrefix + QStringLiteral("/bin")));
    if (TAVOLINS_HAS_CONTROLS) {
        checkControls(root + whereQtLooks, "Acme.Theming");
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        // The module that goes by the style's name is the style and nothing else.
        QCOMPARE(runQml(root + whereQtLooks, "import Tavolins 1.0\nThemeManager { }\n", &output),
                 3);
        QVERIFY2(output.contains("\"Tavolins\" version 1.0 is not installed"), output.constData());
#endif
    }

    // Without themes, the package is found all the same.
    const QString bare = folder() + QStringLiteral("/bare");
    QVERIFY2(runCMake({ QStringLiteral("-DTAVOLINS_INSTALL_THEMES=OFF"), build }, &output) == 0,
             output.constData());
    QVERIFY2(runCMake({ QStringLiteral("--install"), build, QStringLiteral("--prefix"), bare },
                      &output)
                     == 0,
             output.constData());
    QVERIFY(QFileInfo::exists(
            bare + QStringLiteral("/include/tavolins" TAVOLINS_QT_SUFFIX "/theme/theme.h")));
    QVERIFY(!QFileInfo::exists(bare + QStringLiteral("/share")));
    QVERIFY2(configure(testSource(QStringLiteral("consumer")), folder() + QStringLiteral("/user"),
                       { QStringLiteral("-DCMAKE_PREFIX_PATH=") + bare }, &output)
                     == 0,
             output.constData());
}

void tst_Install::subprojectThatIsExcludedIsNotInstalled()
{
    const QString build = folder() + QStringLiteral("/build");
    QByteArray output;
    QVERIFY2(configure(testSource(QStringLiteral("subproject")), build,
                       { QStringLiteral("-DTAVOLINS_SOURCE=" TAVOLINS_SOURCE_DIR),
                         QStringLiteral("-DTAVOLINS_HOW=EXCLUDE_FROM_ALL") },
                       &output)
                     == 0,
             output.constData());
    QVERIFY2(!output.contains("the QML module goes to"), output.constData());
    QVERIFY2(runCMake({ QStringLiteral("--build"), build }, &output) == 0, output.constData());
    const int exitCode = run(build + QStringLiteral("/consumer"), {}, &output);
    QCOMPARE(output, QByteArray());
    QCOMPARE(exitCode, bundledThemes);

    const QString root = folder() + QStringLiteral("/root");
    QVERIFY2(runCMake({ QStringLiteral("--install"), build, QStringLiteral("--prefix"), root },
                      &output)
                     == 0,
             output.constData());
    QVERIFY2(!output.contains("the QML module goes to"), output.constData());
    QVERIFY(!QFileInfo::exists(root));
}

void tst_Install::projectOfTheOtherQtIsTold_data()
{
    QTest::addColumn<QByteArray>("use");
    QTest::addColumn<QByteArray>("message");
    const QByteArray mine = QByteArray::number(QT_VERSION_MAJOR);
    const QByteArray other = QByteArray::number(11 - QT_VERSION_MAJOR);
    QTest::newRow("installed") << QByteArray("find_package(Tavolins CONFIG REQUIRED)\n")
                               << "This installation is built with Qt " + mine
                    + ", but the project has found Qt " + other + " before;";
    QTest::newRow("part of the project")
            << QByteArray("add_subdirectory(" TAVOLINS_SOURCE_DIR " tavolins)\n")
            << "TAVOLINS_QT_MAJOR is " + mine + ", but the project around this one has found Qt "
                    + other + " before";
}

/// Instead of an error from within Qt's own packages.
void tst_Install::projectOfTheOtherQtIsTold()
{
    QFETCH(QByteArray, use);
    QFETCH(QByteArray, message);
    const QByteArray other = QByteArray::number(11 - QT_VERSION_MAJOR);
    const auto project = [&](const QByteArray &found, QByteArray *output) {
        write(QStringLiteral("CMakeLists.txt"),
              "cmake_minimum_required(VERSION 3.16)\n"
              "project(Asking LANGUAGES CXX)\n"
              "find_package(Qt"
                      + other + " REQUIRED COMPONENTS Core)\n" + found);
        return configure(folder(), folder() + QStringLiteral("/build"),
                         { QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_prefix.path() }, output);
    };
    QByteArray output;
    if (project(QByteArray(), &output) != 0)
        QSKIP("the other Qt is not installed");
    QVERIFY(project(use, &output) != 0);
    // CMake wraps its messages.
    QVERIFY2(output.simplified().contains(message), output.constData());
}

/// Installs this build and one with Qt 5 below one prefix.
void tst_Install::bothSeriesSideBySide()
{
    if (QT_VERSION_MAJOR == 5) {
        m_both.remove();
        QSKIP("takes a whole build, and is done by the build with Qt 6");
    }
    const QString build = folder() + QStringLiteral("/build");
    QByteArray output;
    if (configure(QStringLiteral(TAVOLINS_SOURCE_DIR), build,
                  { QStringLiteral("-DTAVOLINS_BUILD_TESTS=OFF"),
                    QStringLiteral("-DTAVOLINS_BUILD_EXAMPLES=OFF"),
                    // What compiles fastest.
                    QStringLiteral("-DCMAKE_BUILD_TYPE=Debug") },
                  &output, 5)
        != 0) {
        m_both.remove();
        QVERIFY2(output.contains("find_package"), output.constData());
        QSKIP("Qt 5 is not installed beside Qt 6");
    }
    QVERIFY2(runCMake({ QStringLiteral("--build"), build }, &output) == 0, output.constData());

    const auto install = [this](const QString &tree, QByteArray *said) {
        return runCMake(
                { QStringLiteral("--install"), tree, QStringLiteral("--prefix"), m_both.path() },
                said);
    };
    const auto files = [this] {
        QHash<QString, QByteArray> found;
        QDirIterator all(m_both.path(), QDir::Files, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = all.next();
            found.insert(path, contentOf(path));
        }
        return found;
    };
    QVERIFY2(install(QStringLiteral(TAVOLINS_BUILD_DIR), &output) == 0, output.constData());
    const QHash<QString, QByteArray> first = files();
    QVERIFY2(install(build, &output) == 0, output.constData());
    const QHash<QString, QByteArray> all = files();
    const QByteArray second = output;
    for (auto file = first.cbegin(); file != first.cend(); ++file) {
        QVERIFY2(all.value(file.key()) == file.value(), qPrintable(file.key()));
        QVERIFY2(!second.contains("Installing: " + file.key().toUtf8() + '\n'),
                 qPrintable(file.key()));
    }
    QVERIFY(all.size() > first.size());
}

void tst_Install::projectGetsTheOneForItsQt_data()
{
    addWaysToChooseQt();
}

void tst_Install::projectGetsTheOneForItsQt()
{
    QFETCH(QByteArray, beforeIt);
    QFETCH(int, expected);
    if (!m_both.isValid() || !QDir(m_both.path()).exists())
        QSKIP("Qt 5 is not installed beside Qt 6");
    write(QStringLiteral("CMakeLists.txt"),
          "cmake_minimum_required(VERSION 3.16)\n"
          "project(Asking LANGUAGES CXX)\n"
                  + beforeIt
                  + "find_package(Tavolins 1.0 CONFIG REQUIRED)\n"
                    "get_target_property(libraries Tavolins::Tavolins INTERFACE_LINK_LIBRARIES)\n"
                    "message(STATUS \"It links ${libraries}\")\n"
                    "message(STATUS \"It imports ${TAVOLINS_QML_IMPORT_PATH}\")\n");
    QByteArray output;
    QVERIFY2(configureWritten({ QStringLiteral("-DCMAKE_PREFIX_PATH=") + m_both.path() }, &output)
                     == 0,
             output.constData());
    const QByteArray qt = "Qt" + QByteArray::number(expected);
    QVERIFY2(output.contains("It links " + qt + "::Core;" + qt + "::Gui;" + qt + "::Qml\n"),
             output.constData());
    QVERIFY2(output.contains("/qt" + QByteArray::number(expected) + "/qml\n"), output.constData());
}

void tst_Install::partIsBuiltWithTheQtOfItsProject_data()
{
    addWaysToChooseQt();
}

/// Also when it is configured a second time, with what the first time left in the cache.
void tst_Install::partIsBuiltWithTheQtOfItsProject()
{
    QFETCH(QByteArray, beforeIt);
    QFETCH(int, expected);
    if (!m_both.isValid() || !QDir(m_both.path()).exists())
        QSKIP("Qt 5 is not installed beside Qt 6");
    write(QStringLiteral("CMakeLists.txt"),
          "cmake_minimum_required(VERSION 3.16)\n"
          "project(Whole LANGUAGES CXX)\n"
                  + beforeIt
                  + "add_subdirectory(\"" TAVOLINS_SOURCE_DIR "\" theming)\n"
                    "find_package(QT NAMES Qt6 Qt5 REQUIRED COMPONENTS Core)\n"
                    "message(STATUS \"The project finds Qt ${QT_VERSION_MAJOR}\")\n");
    const QByteArray found = beforeIt.contains("NAMES Qt5") ? "5" : "6";
    for (int time = 0; time < 2; ++time) {
        QByteArray output;
        QVERIFY2(configureWritten({}, &output) == 0, output.constData());
        QVERIFY2(isBuiltWith(expected, output), output.constData());
        QVERIFY2(output.contains("The project finds Qt " + found + '\n'), output.constData());
    }
}

/// What nobody chose goes with the Qt, and what somebody chose stays.
void tst_Install::buildTreeChangesItsQt()
{
    if (!m_both.isValid() || !QDir(m_both.path()).exists())
        QSKIP("Qt 5 is not installed beside Qt 6");
    const QString build = folder() + QStringLiteral("/build");
    const auto installFolder = [&build](int qt, const QStringList &options) {
        QByteArray output;
        if (configure(QStringLiteral(TAVOLINS_SOURCE_DIR), build,
                      QStringList{ QStringLiteral("-DTAVOLINS_BUILD_TESTS=OFF") } + options,
                      &output, qt)
                    != 0
            || !isBuiltWith(qt, output)) {
            return output;
        }
        const QByteArray cache = contentOf(build + QStringLiteral("/CMakeCache.txt"));
        const QByteArray name = "\nTAVOLINS_QML_INSTALL_DIR:STRING=";
        const int start = int(cache.indexOf(name)) + name.size();
        return cache.mid(start, cache.indexOf('\n', start) - start);
    };
    const QByteArray folder5 = installFolder(5, {});
    QVERIFY2(folder5.endsWith("/qt5/qml"), folder5.constData());
    const QByteArray folder6 = installFolder(6, {});
    QVERIFY2(folder6.endsWith("/qt6/qml"), folder6.constData());
    QCOMPARE(installFolder(5, {}), folder5);
    QCOMPARE(installFolder(5, { QStringLiteral("-DTAVOLINS_QML_INSTALL_DIR=own") }), "own");
    QCOMPARE(installFolder(6, {}), "own");
}

QTEST_GUILESS_MAIN(tst_Install)
#include "tst_install.moc"
