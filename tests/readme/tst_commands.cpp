#include "readme/markdown.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <algorithm>

/// What the README has its reader type into a shell or a CMakeLists.txt, and the programs in C++ on
/// the pages, built against an installation.
class tst_Commands : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void commands_data();
    void commands();
    void galleryScriptHelpsAtOnce_data();
    void galleryScriptHelpsAtOnce();
    void exampleRunsByItsCommand();
    void deployedApplicationRuns();
    void deployedApplicationHasTheStyle();
    void followerNoticesReplacedFiles();

private:
    struct Result
    {
        int exitCode;
        QByteArray output;
    };
    static Result run(const QString &folder, const QString &program, const QStringList &arguments);
    Result build();
    void showWithTheStyle(const QStringList &words);
    QStringList deploying(const QString &language, const QString &heading) const;
    void writeDeployedApplication(const QString &extraWindow);

    const Markdown m_readme{ QStringLiteral("README.md") };
    const Markdown m_contributing{ QStringLiteral("CONTRIBUTING.md") };
    const Markdown m_using{ QStringLiteral("docs/using.md") };
    const Markdown m_deploying{ QStringLiteral("docs/deploying.md") };
    QTemporaryDir m_checkout;
    QTemporaryDir m_prefix;
};

namespace {

const QString cmake = QStringLiteral(TAVOLINS_CMAKE);

// Ends a window of the deployed application, when all it shows comes from its resources.
const QString end = QStringLiteral(R"(
    property Item button: contentItem.children[0]
    Timer {
        running: true
        interval: 100
        onTriggered: Qt.exit(title === "Harbour" && color == "#f4f7f9" && button.item
                             && button.item.radius === 6 && button.item.color == "#d5dfe6" ? 42 : 1)
    }
)");

const QString deployingPage = QStringLiteral("Deploying an application");

/// What a page says of Qt 5, for the Qt of this build.
QString forThisQt(QString code)
{
    if (QT_VERSION_MAJOR > 5)
        code.replace(QLatin1String("Qt5 5.12"), QLatin1String("Qt6"))
                .replace(QLatin1String("Qt5"), QLatin1String("Qt6"));
    return code;
}

QString withoutRemark(const QString &line)
{
    return line.section(QLatin1Char('#'), 0, 0).trimmed();
}

} // namespace

/// Runs a program in \a folder, as a child that knows nothing of this build.
tst_Commands::Result tst_Commands::run(const QString &folder, const QString &program,
                                       const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
    }
    const bool hasEnded = process.exitStatus() == QProcess::NormalExit;
    return { hasEnded ? process.exitCode() : -1, process.readAll() };
}

/// Makes what looks like a fresh checkout, so that commands write nothing into this one.
void tst_Commands::initTestCase()
{
    QVERIFY(m_checkout.isValid() && m_prefix.isValid());
    const QDir source(QStringLiteral(TAVOLINS_SOURCE_DIR));
    const QStringList names = source.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (name != QLatin1String("build"))
            QVERIFY(QFile::link(source.filePath(name), m_checkout.filePath(name)));
    }
    const Result installed = run(m_checkout.path(), cmake,
                                 { QStringLiteral("--install"), QStringLiteral(TAVOLINS_BUILD_DIR),
                                   QStringLiteral("--prefix"), m_prefix.path() });
    QVERIFY2(installed.exitCode == 0, installed.output.constData());
}

/// Builds what is in the test's folder by the commands of docs/deploying.md, in its folder "build",
/// and installs it into "installed".
tst_Commands::Result tst_Commands::build()
{
    QStringList commands;
    const QList<Markdown::Block> blocks = m_deploying.blocks();
    for (const Markdown::Block &block : blocks) {
        if (block.language.isEmpty())
            commands += block.code.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    Result result = { commands.size() == 3 ? 0 : -1, "not three commands" };
    for (QString command : qAsConst(commands)) {
        command.replace(QStringLiteral("/opt/tavolins"), m_prefix.path());
        command.replace(QStringLiteral("/opt/harbour"), folder() + QStringLiteral("/installed"));
        QStringList arguments = command.split(QLatin1Char(' '));
        if (arguments.takeFirst() != QLatin1String("cmake"))
            return { -1, command.toUtf8() };
        if (arguments.first() == QLatin1String("-S"))
            arguments += { QStringLiteral("-DCMAKE_CXX_COMPILER=" TAVOLINS_CXX_COMPILER),
                           QStringLiteral("-DTAVOLINS_QT_MAJOR=%1").arg(QT_VERSION_MAJOR) };
        if (result.exitCode == 0)
            result = run(folder(), cmake, arguments);
    }
    return result;
}

void tst_Commands::commands_data()
{
    QTest::addColumn<QStringList>("words");
    for (const Markdown *page : { &m_readme, &m_contributing }) {
        const QList<Markdown::Block> blocks = page->blocks();
        for (const Markdown::Block &block : blocks) {
            if (!block.language.isEmpty())
                continue;
            const QStringList lines = block.code.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
            for (const QString &line : lines) {
                const QString command = withoutRemark(line);
                QTest::newRow(qPrintable(command)) << command.split(QLatin1Char(' '));
            }
        }
        const QStringList pieces = Markdown::codeIn(page->prose());
        for (const QString &piece : pieces) {
            if (piece.startsWith(QLatin1String("scripts/")) && !piece.endsWith(QLatin1Char('/')))
                QTest::newRow(qPrintable(piece)) << piece.split(QLatin1Char(' '));
        }
    }
}

/// Commands that take minutes, or install into the system, are only tried as far as they are sure
/// to mean what the reader expects.
void tst_Commands::commands()
{
    QFETCH(QStringList, words);
    if (words.contains(QStringLiteral("QT_QUICK_CONTROLS_STYLE=Tavolins"))) {
        showWithTheStyle(words);
        return;
    }
    const QString program = words.takeFirst();
    if (program.startsWith(QLatin1String("scripts/"))) {
        const QFileInfo script(m_checkout.filePath(program));
        QVERIFY(script.isFile() && script.isExecutable());
        return;
    }
    if (program == QLatin1String("ctest")) {
        // Tests that are not built yet have a name already.
        words.append(QStringLiteral("-N"));
        const Result result = run(m_checkout.path(), QStringLiteral(TAVOLINS_CTEST), words);
        QVERIFY2(result.exitCode == 0, result.output.constData());
        QVERIFY2(result.output.contains("Total Tests: 1\n"), result.output.constData());
        return;
    }
    QCOMPARE(program, QStringLiteral("cmake"));
    if (words.first() == QLatin1String("--install")) {
        QCOMPARE(words.size(), 2);
        QVERIFY(QFileInfo(m_checkout.filePath(words.at(1) + QLatin1String("/cmake_install.cmake")))
                        .isFile());
        return;
    }
    // A build names what it would do.
    if (words.first() == QLatin1String("--build"))
        words += { QStringLiteral("--"), QStringLiteral("-n") };
    const Result result = run(m_checkout.path(), cmake, words);
    QVERIFY2(result.exitCode == 0, result.output.constData());
    QVERIFY2(!result.output.contains("not used by the project"), result.output.constData());
}

/// Runs QML as the README has it, in this build's folders, until all of it has been shown once.
void tst_Commands::showWithTheStyle(const QStringList &words)
{
#if defined(TAVOLINS_WITHOUT_CONTROLS)
    Q_UNUSED(words)
    QSKIP("built without the style for Qt Quick Controls");
#else
    QCOMPARE(words.size(), 4);
    QCOMPARE(words.at(0), QStringLiteral("QML2_IMPORT_PATH=build/release/qml"));
    QCOMPARE(words.at(2), QStringLiteral("qml"));
    write(QStringLiteral("end.qml"),
          "import QtQml 2.12\n"
          "Timer { running: true; interval: 100; onTriggered: Qt.exit(42) }\n");
    QVERIFY(qputenv("QML2_IMPORT_PATH", TAVOLINS_QML_IMPORT_PATH));
    QVERIFY(qputenv("QT_QUICK_CONTROLS_STYLE", "Tavolins"));
    const Result result = run(m_checkout.path(), QStringLiteral(TAVOLINS_QML_VIEWER),
                              { words.at(3), folder() + QStringLiteral("/end.qml") });
    qunsetenv("QML2_IMPORT_PATH");
    qunsetenv("QT_QUICK_CONTROLS_STYLE");
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 42);
#endif
}

void tst_Commands::galleryScriptHelpsAtOnce_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("--help") << QStringList{ QStringLiteral("--help") };
    QTest::newRow("-h behind others")
            << QStringList{ QStringLiteral("--qt"), QStringLiteral("6"), QStringLiteral("themes"),
                            QStringLiteral("-h") };
}

/// Before anything is installed or built.
void tst_Commands::galleryScriptHelpsAtOnce()
{
    QFETCH(QStringList, arguments);
    const Result result = run(folder(), m_checkout.filePath(QStringLiteral("scripts/gallery")),
                              arguments);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.output.startsWith("Usage: scripts/gallery "), result.output.constData());
    QVERIFY2(!result.output.contains("\n== ") && !result.output.contains("set -"),
             result.output.constData());
}

void tst_Commands::exampleRunsByItsCommand()
{
    QStringList commands;
    const QStringList pieces = Markdown::codeIn(m_readme.prose());
    for (const QString &piece : pieces) {
        if (piece.startsWith(QLatin1String("qml ")))
            commands.append(piece);
    }
    QCOMPARE(commands.size(), 1);
    QStringList arguments = commands.first().split(QLatin1Char(' '));
    const QString program = arguments.takeFirst();
    const int importPath = arguments.indexOf(QStringLiteral("build/release/qml"));
    QVERIFY(importPath > 0);
    arguments[importPath] = QStringLiteral(TAVOLINS_QML_IMPORT_PATH);

    write(QStringLiteral("themes/harbour.thm"), m_readme.only(QStringLiteral("json")).toUtf8());
    const QString module = QStringLiteral("import " TAVOLINS_QML_URI " ");
    write(QStringLiteral("harbour.qml"),
          m_readme.only(QStringLiteral("qml"))
                  .replace(QStringLiteral("import Tavolins "), module)
                  .toUtf8());
    // Ends the program, and tells what there was to see.
    write(QStringLiteral("end.qml"), "import QtQml 2.12\n" + module.toUtf8() + R"(1.0
        Timer {
            running: true
            interval: 100
            onTriggered: Qt.exit(ThemeManager.current.title === "Harbour" ? 42 : 1)
        }
    )");
    QCOMPARE(program, QStringLiteral("qml"));
    const Result result = run(folder(), QStringLiteral(TAVOLINS_QML_VIEWER),
                              arguments + QStringList(QStringLiteral("end.qml")));
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 42);
}

/// The pieces in \a language under \a heading of docs/deploying.md.
QStringList tst_Commands::deploying(const QString &language, const QString &heading) const
{
    QStringList pieces;
    const QList<Markdown::Block> blocks = m_deploying.blocks();
    for (const Markdown::Block &block : blocks) {
        if (block.language == language && block.heading == heading)
            pieces.append(block.code);
    }
    return pieces;
}

/// The files of docs/deploying.md, as it names them. \a extraWindow goes into the window.
void tst_Commands::writeDeployedApplication(const QString &extraWindow)
{
    const auto pieces = [this](const char *language) {
        return deploying(QLatin1String(language), deployingPage);
    };
    QStringList qml = pieces("qml");
    QCOMPARE(qml.size(), 2);
    for (QString &code : qml)
        code.replace(QStringLiteral("import Tavolins "),
                     QStringLiteral("import " TAVOLINS_QML_URI " "));
    QString window = qml.first().trimmed();
    QVERIFY(window.endsWith(QLatin1Char('}')));
    window.chop(1);
    const QMap<QString, QString> files{
        { QStringLiteral("main.cpp"), pieces("cpp").value(0) },
        { QStringLiteral("harbour.qrc"), pieces("xml").value(0) },
        { QStringLiteral("main.qml"), window + extraWindow + QLatin1Char('}') },
        { QStringLiteral("themes/harbour.thm"), pieces("json").value(0) },
        { QStringLiteral("themes/styles/Button.qml"), qml.last() },
    };
    for (auto file = files.begin(); file != files.end(); ++file) {
        QVERIFY2(!file->isEmpty() && m_deploying.prose().contains(QLatin1Char('`') + file.key()),
                 qPrintable(file.key()));
        write(file.key(), file->toUtf8());
    }
}

void tst_Commands::deployedApplicationRuns()
{
    writeDeployedApplication(end);
    const QStringList blocks = deploying(QStringLiteral("cmake"), deployingPage);
    QCOMPARE(blocks.size(), 2);

    // The other way of the page first: nothing of the module is carried, and import paths that Qt
    // has anyway lead to it.
    QStringList lines = blocks.first().split(QLatin1Char('\n'));
    const auto carriesModule = [](const QString &line) {
        return line.startsWith(QLatin1String("install(DIRECTORY"))
                || line.startsWith(QLatin1String("set_target_properties"));
    };
    QCOMPARE(std::count_if(lines.cbegin(), lines.cend(), carriesModule), 2);
    lines.erase(std::remove_if(lines.begin(), lines.end(), carriesModule), lines.end());
    write(QStringLiteral("CMakeLists.txt"),
          forThisQt(lines.join(QLatin1Char('\n')) + blocks.last()).toUtf8());
    const Result linked = build();
    QVERIFY2(linked.exitCode == 0, linked.output.constData());
    const QString modules = m_prefix.filePath(QStringLiteral(TAVOLINS_QML_INSTALL_DIR));
    QVERIFY(qputenv("QML2_IMPORT_PATH", QFile::encodeName(modules)));
    const Result ranLinked = run(folder(), folder() + QStringLiteral("/installed/bin/harbour"), {});
    qunsetenv("QML2_IMPORT_PATH");
    QCOMPARE(ranLinked.output, QByteArray());
    QCOMPARE(ranLinked.exitCode, 42);

    write(QStringLiteral("CMakeLists.txt"), forThisQt(blocks.first()).toUtf8());
    const Result built = build();
    QVERIFY2(built.exitCode == 0, built.output.constData());
    // Elsewhere, and without what it was built from.
    QDir here(folder());
    QVERIFY(here.rename(QStringLiteral("installed"), QStringLiteral("moved")));
    QVERIFY(QDir(here.filePath(QStringLiteral("build"))).removeRecursively());
    QVERIFY(QDir(here.filePath(QStringLiteral("themes"))).removeRecursively());
    const Result ran = run(folder(), here.filePath(QStringLiteral("moved/bin/harbour")), {});
    QCOMPARE(ran.output, QByteArray());
    QCOMPARE(ran.exitCode, 42);
}

/// The same application with the section about Qt Quick Controls.
void tst_Commands::deployedApplicationHasTheStyle()
{
#if defined(TAVOLINS_WITHOUT_CONTROLS)
    QSKIP("built without the style for Qt Quick Controls");
#elif QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QSKIP("the section is about Qt 5; with Qt 6 the style is in the module's folder");
#else
    const QString section = QStringLiteral("With the style for Qt Quick Controls");
    const QString cmakeCode = deploying(QStringLiteral("cmake"), section).value(0);
    const QStringList code =
            deploying(QStringLiteral("cpp"), section).value(0).split(QStringLiteral("\n\n"));
    QCOMPARE(code.size(), 2);
    // A window of the style has the theme's background.
    writeDeployedApplication(QStringLiteral(R"(
        Controls.ApplicationWindow { id: styled }
        Timer {
            running: true
            interval: 100
            onTriggered: Qt.exit(styled.color == "#f4f7f9" ? 42 : 1)
        }
    )"));
    const auto change = [this](const char *name, const QString &before, const QString &after) {
        QFile file(folder() + QLatin1Char('/') + QLatin1String(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        QCOMPARE(text.count(before), 1);
        write(QLatin1String(name), text.replace(before, after).toUtf8());
    };
    change("main.qml", QStringLiteral("import QtQuick.Window 2.12\n"),
           QStringLiteral("import QtQuick.Window 2.12\n"
                          "import QtQuick.Controls 2.12 as Controls\n"));
    const QString engine = QStringLiteral("    QQmlApplicationEngine engine;\n");
    change("main.cpp", engine, code.last() + engine);
    const QString include = QStringLiteral("#include <QtGui/QGuiApplication>\n");
    change("main.cpp", include, include + code.first() + QLatin1Char('\n'));
    write(QStringLiteral("CMakeLists.txt"),
          (deploying(QStringLiteral("cmake"), deployingPage).value(0) + cmakeCode).toUtf8());
    const Result built = build();
    QVERIFY2(built.exitCode == 0, built.output.constData());
    const Result ran = run(folder(), folder() + QStringLiteral("/installed/bin/harbour"), {});
    QCOMPARE(ran.output, QByteArray());
    QCOMPARE(ran.exitCode, 42);
#endif
}

/// The class of docs/using.md, linked as the README has it.
void tst_Commands::followerNoticesReplacedFiles()
{
    write(QStringLiteral("CMakeLists.txt"),
          "cmake_minimum_required(VERSION 3.16)\n"
          "project(Application LANGUAGES CXX)\n"
          "add_executable(application main.cpp)\n"
                  + m_readme.only(QStringLiteral("cmake")).toUtf8());
    write(QStringLiteral("main.cpp"), m_using.only(QStringLiteral("cpp")).toUtf8() + R"(
        #include <QtCore/QElapsedTimer>
        #include <QtCore/QSaveFile>
        #include <QtGui/QGuiApplication>

        static bool saved(QFileDevice &file, int radius)
        {
            file.open(QIODevice::WriteOnly);
            file.write("{\"title\": \"T\", \"global\": {\"radius\": "
                       + QByteArray::number(radius) + "}}");
            auto *replacement = qobject_cast<QSaveFile *>(&file);
            if (replacement)
                replacement->commit();
            else
                file.close();
            QElapsedTimer time;
            for (time.start(); time.elapsed() < 10000;) {
                QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
                if (Theme::global()->radius() == radius)
                    return true;
            }
            return false;
        }

        int main(int argc, char *argv[])
        {
            QGuiApplication application(argc, argv);
            const EditFollower follower;
            ThemeManager::getInstance()->loadThemes("themes", "T");
            const QString path = ThemeManager::getInstance()->current()->filename();
            for (int radius = 1; radius <= 3; ++radius) {
                QSaveFile replacement(path);
                if (!saved(replacement, radius))
                    return radius;
            }
            QFile inPlace(path);
            return saved(inPlace, 42) ? 42 : 4;
        }
    )");
    const Result built = build();
    QVERIFY2(built.exitCode == 0, built.output.constData());
    write(QStringLiteral("themes/t.thm"), R"({ "title": "T", "global": { "radius": 0 } })");
    const Result ran = run(folder(), folder() + QStringLiteral("/build/application"), {});
    QCOMPARE(ran.output, QByteArray());
    QCOMPARE(ran.exitCode, 42);
}

TAVOLINS_TEST_MAIN(tst_Commands)
#include "tst_commands.moc"
