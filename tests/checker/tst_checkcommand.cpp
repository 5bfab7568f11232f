// `tavolins check` and `tavolins explain` as commands: arguments, output, exit codes.

#include "support/programrun.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

class tst_CheckCommand : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void helps_data();
    void helps();
    void version();
    void wrongUse_data();
    void wrongUse();
    void exitCodes_data();
    void exitCodes();
    void failuresDoNotHideProblems();
    void whatMayNotBeReadIsTold();
    void namesCannotForgeLines();
    void longLinesTakeNoTime_data();
    void longLinesTakeNoTime();
    void outputThatIsLost_data();
    void outputThatIsLost();
    void filesAreNotPrintedInto();
    void codes();
    void formats();
    void noColorsWhenPiped();
    void colorsAndSourceOnATerminal();
    void colorsAreLeftOutOnRequest_data();
    void colorsAreLeftOutOnRequest();
    void warningsAsErrors();
    void contrastLevels();
    void importPaths();
    void explains();
    void ownThemesAreClean_data();
    void ownThemesAreClean();
    void themesOfThePagesAreClean();
    void memoryIsFlatInTheNumberOfFiles();
    void readmeSession();
    void needsNoDisplay();
    void everyOptionIsInManualAndCompletions();

private:
    struct Result
    {
        int exitCode;
        QString output;
        QString errors;
    };
    Result run(const QStringList &arguments, const QStringList &environment = QStringList());
    Result runOnTerminal(const QString &arguments, const QStringList &environment = QStringList());
    int peakKilobytes(const char *folder);
};

namespace {

const int timeoutMilliseconds = 60000;

QString contentOf(const char *path)
{
    QFile file(QStringLiteral(TAVOLINS_SOURCE_DIR) + QLatin1Char('/') + QLatin1String(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

/// Runs the tool as on a machine without a display, in which nothing is prepared for it.
tst_CheckCommand::Result tst_CheckCommand::run(const QStringList &arguments,
                                               const QStringList &variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name :
         { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_QUICK_BACKEND", "XDG_RUNTIME_DIR",
           "QML2_IMPORT_PATH", "LD_LIBRARY_PATH", "NO_COLOR" })
        environment.remove(QLatin1String(name));
    for (const QString &variable : variables)
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder());
    process.start(arguments.first(), arguments.mid(1));
    if (!process.waitForFinished(timeoutMilliseconds)
        || process.exitStatus() != QProcess::NormalExit)
        return { -1, QString(), process.errorString() };
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
             QString::fromUtf8(process.readAllStandardError()) };
}

/// The same on a terminal, whose line ends come back with carriage returns.
tst_CheckCommand::Result tst_CheckCommand::runOnTerminal(const QString &arguments,
                                                         const QStringList &variables)
{
    Result result = run({ QStringLiteral("script"), QStringLiteral("-qec"),
                          QStringLiteral(TOOL_PROGRAM " ") + arguments,
                          QStringLiteral("/dev/null") },
                        variables);
    result.output.remove(QLatin1Char('\r'));
    return result;
}

/// The most memory that a check of \a folder without problems takes; 0 if it does not go well.
int tst_CheckCommand::peakKilobytes(const char *folder)
{
    // A program begins with the peak of the one that starts it, so that is a small one.
    const Result result = run(
            { QStringLiteral(PYTHON), QStringLiteral("-c"),
              QStringLiteral("import resource, subprocess, sys\n"
                             "subprocess.run(sys.argv[1:], check=True, stdout=subprocess.DEVNULL)\n"
                             "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)"),
              QStringLiteral(TOOL_PROGRAM), QStringLiteral("check"), QLatin1String(folder) },
            // Freed memory that a sanitizer keeps for a while would count as used.
            { QStringLiteral(
                    "ASAN_OPTIONS=quarantine_size_mb=0:thread_local_quarantine_size_kb=0") });
    return result.output.toInt();
}

namespace {

QStringList tool(const char *arguments)
{
    return QStringList(QStringLiteral(TOOL_PROGRAM)) + words(arguments);
}

} // namespace

void tst_CheckCommand::helps_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("expected");
    QTest::newRow("tool") << QStringLiteral("--help") << QStringLiteral("check explain --version");
    QTest::newRow("tool, short") << QStringLiteral("-h") << QStringLiteral("check explain");
    QTest::newRow("check")
            << QStringLiteral("check --help")
            << QStringLiteral("--format --contrast --disable --only --werror --watch --import "
                              "--list-codes --color PATH");
    QTest::newRow("explain") << QStringLiteral("explain --help") << QStringLiteral("CODE");
}

void tst_CheckCommand::helps()
{
    QFETCH(QString, arguments);
    QFETCH(QString, expected);
    const Result result = run(tool(arguments.toUtf8().constData()));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.startsWith(QLatin1String("Usage: " TOOL_NAME " ")));
    const QStringList expectedWords = words(expected.toUtf8().constData());
    for (const QString &word : expectedWords)
        QVERIFY2(result.output.contains(word), qPrintable(word));
}

void tst_CheckCommand::version()
{
    const Result result = run(tool("--version"));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, QStringLiteral(TOOL_NAME " 1.0.0\n"));
}

void tst_CheckCommand::wrongUse_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const char *arguments, const char *message) {
        QTest::newRow(name) << QString::fromUtf8(arguments) << QString::fromUtf8(message);
    };
    row("no subcommand", "", TOOL_NAME ": there is no subcommand");
    row("unknown subcommand", "chek", TOOL_NAME ": there is no subcommand \"chek\"");
    row("no path", "check", TOOL_NAME " check: name a folder of themes, or theme files");
    row("unknown option", "check --strict .", TOOL_NAME " check: unknown option 'strict'");
    row("option without its value", "check . --only",
        TOOL_NAME " check: missing value after '--only'");
    row("unknown format", "check --format xml .",
        TOOL_NAME " check: the format \"xml\" is not text, json or sarif");
    row("unknown color choice", "check --color maybe .",
        TOOL_NAME " check: the value of --color \"maybe\" is not auto, always or never");
    row("unknown contrast", "check --contrast A .",
        TOOL_NAME " check: the contrast \"A\" is not AA, AAA or off");
    row("unknown code", "check --disable syntax-eror .",
        TOOL_NAME " check: there is no code \"syntax-eror\"; did you mean syntax-error?");
    row("unknown code among others", "check --only bad-radius,xyzzy .",
        TOOL_NAME " check: there is no code \"xyzzy\"");
    row("watching in a format of one document", "check --watch --format sarif .",
        TOOL_NAME " check: --watch goes with the formats text and json only");
    row("explaining nothing", "explain",
        TOOL_NAME " explain: name one code; `" TOOL_NAME " check --list-codes` prints all");
    row("explaining two", "explain bad-radius empty-file",
        TOOL_NAME " explain: name one code; `" TOOL_NAME " check --list-codes` prints all");
    row("explaining an unknown code", "explain radius-bad",
        TOOL_NAME " explain: there is no code \"radius-bad\"");
}

void tst_CheckCommand::wrongUse()
{
    QFETCH(QString, arguments);
    QFETCH(QString, message);
    write(QStringLiteral("a.thm"), R"({ "title": "A" })");
    const Result result = run(tool(arguments.toUtf8().constData()));
    QCOMPARE(result.errors.section(QLatin1Char('\n'), 0, 0), message);
    QVERIFY(result.errors.contains(QLatin1String("--help`.\n")));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

void tst_CheckCommand::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("lastLine");
    const auto row = [](const char *name, const char *arguments, int exitCode, const char *line) {
        QTest::newRow(name) << QString::fromUtf8(arguments) << exitCode << QString::fromUtf8(line);
    };
    row("clean", "check clean", 0, "1 theme: no problem");
    row("note only", "check note", 0, "1 theme: 1 note");
    row("warning", "check warning", 1, "1 theme: 1 warning");
    row("error", "check error", 1, "1 theme: 1 error");
    row("error that is left out", "check error --disable empty-title", 0, "1 theme: no problem");
    row("error that is not asked for", "check error --only bad-radius", 0, "1 theme: no problem");
    row("one file", "check mixed/clean.thm", 0, "1 theme: no problem");
    row("two files", "check mixed/clean.thm mixed/error.thm", 1, "2 themes: 1 error");
    row("two folders", "check clean error", 1, "2 themes: 1 error");
    row("missing folder", "check nowhere", 2, "nothing was checked");
    row("folder without themes", "check empty", 2, "nothing was checked");
    row("folder without themes, but with a style", "check styled", 2,
        "0 themes: 1 error; 1 path could not be checked");
    row("one of two folders missing", "check clean nowhere", 2,
        "1 theme: no problem; 1 path could not be checked");
    row("two of three folders missing", "check error nowhere neither", 2,
        "1 theme: 1 error; 2 paths could not be checked");
}

void tst_CheckCommand::exitCodes()
{
    QFETCH(QString, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, lastLine);
    write(QStringLiteral("clean/a.thm"), R"({ "title": "A" })");
    write(QStringLiteral("note/a.thm"), R"({ "title": "A", "global":
        { "fonts": { "main": { "family": "No Such Family", "pointSize": 16 } } } })");
    write(QStringLiteral("warning/a.thm"), R"({ "title": "A", "a": {} })");
    write(QStringLiteral("error/a.thm"), R"({ "title": "" })");
    write(QStringLiteral("mixed/clean.thm"), R"({ "title": "A" })");
    write(QStringLiteral("mixed/error.thm"), R"({ "title": "" })");
    write(QStringLiteral("empty/readme.txt"), "");
    write(QStringLiteral("styled/styles/Card.qml"), "import QtQml 2.0\nQtObject {\n");
    const Result result = run(tool(arguments.toUtf8().constData()));
    QCOMPARE(result.output.trimmed().section(QLatin1Char('\n'), -1), lastLine);
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(result.errors.isEmpty(), exitCode != 2);
}

void tst_CheckCommand::failuresDoNotHideProblems()
{
    write(QStringLiteral("error/a.thm"), R"({ "title": "" })");
    const Result result = run(tool("check error nowhere"));
    QCOMPARE(result.exitCode, 2);
    QVERIFY(result.output.contains(QLatin1String("[empty-title]")));
    QCOMPARE(result.errors,
             QStringLiteral(TOOL_NAME " check: there is no file or folder \"nowhere\"\n"));
}

void tst_CheckCommand::whatMayNotBeReadIsTold()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    write(QStringLiteral("t/b.thm"), R"({ "title": "B" })");
    write(QStringLiteral("t/styles/Card.qml"), "import QtQml 2.0\nQtObject {}\n");
    write(QStringLiteral("t/fonts/x.ttf"), "no font");
    write(QStringLiteral("closed/a.thm"), R"({ "title": "A" })");
    const QStringList closed = { QStringLiteral("t/b.thm"), QStringLiteral("t/styles"),
                                 QStringLiteral("t/fonts"), QStringLiteral("closed") };
    for (const QString &name : closed)
        QVERIFY(QFile::setPermissions(folder() + QLatin1Char('/') + name, QFile::Permissions()));
    const bool mayReadAll = QFileInfo(folder() + QStringLiteral("/closed")).isReadable();
    const Result result = run(tool("check t closed"));
    for (const QString &name : closed)
        QVERIFY(QFile::setPermissions(folder() + QLatin1Char('/') + name,
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    if (mayReadAll)
        QSKIP("this user may read everything");
    QCOMPARE(
            result.output,
            QStringLiteral("t/b.thm:1:1: error: the file can't be opened, so the theme is left out "
                           "[unreadable-file]\n"
                           "t/fonts:1:1: error: this folder can't be read, so it is passed over "
                           "[unreadable-file]\n"
                           "t/styles:1:1: error: this folder can't be read, so it is passed over "
                           "[unreadable-file]\n"
                           "2 themes: 3 errors; 1 path could not be checked\n"));
    QCOMPARE(result.errors,
             QStringLiteral(TOOL_NAME " check: the folder \"closed\" can't be read\n"));
    QCOMPARE(result.exitCode, 2);
}

/// What stands in names of files and in arguments can't look like lines of a report.
void tst_CheckCommand::namesCannotForgeLines()
{
    write(QStringLiteral("t/a\nb.thm"), R"({ "title": "" })");
    const Result file = run(tool("check t"));
    QVERIFY(file.output.startsWith(QStringLiteral("t/a\uFFFDb.thm:1:12: error: ")));
    QCOMPARE(file.output.count(QLatin1Char('\n')), 2);
    const Result argument = run({ QStringLiteral(TOOL_PROGRAM), QStringLiteral("check"),
                                  QStringLiteral("\033[2Jno\nwhere") });
    QCOMPARE(argument.errors,
             QStringLiteral(TOOL_NAME
                            " check: there is no file or folder \"\uFFFD[2Jno\uFFFDwhere\"\n"));
}

void tst_CheckCommand::longLinesTakeNoTime_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("lastLine");
    QTest::newRow("keys that are written again") << QStringLiteral("t/b.thm")
                                                 << QByteArray("{ \"title\": \"B\", \"global\": { ")
                    + QByteArray("\"radius\": 1, ").repeated(20000) + "\"radius\": 1 } }"
                                                 << QStringLiteral("2 themes: 20000 errors");
    QTest::newRow("colors of a style")
            << QStringLiteral("t/styles/Card.qml")
            << QByteArray("import QtQml 2.0\nQtObject { property var a: [")
                    + QByteArray("\"#fff\", ").repeated(20000) + "1] }\n"
            << QStringLiteral("1 theme: 20000 notes");
}

/// Each problem has its column and an excerpt of its line, which must not be counted out anew.
void tst_CheckCommand::longLinesTakeNoTime()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, text);
    QFETCH(QString, lastLine);
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    write(name, text);
    // Within the time that a run has; it took minutes once.
    const Result result = run(tool("check t"));
    QCOMPARE(result.output.trimmed().section(QLatin1Char('\n'), -1), lastLine);
}

void tst_CheckCommand::outputThatIsLost_data()
{
    QTest::addColumn<QString>("arguments");
    for (const char *arguments :
         { "--help", "--version", "check t", "check t --watch", "check t --format sarif",
           "check --list-codes", "explain bad-radius", "schema", "show t/a.thm" })
        QTest::newRow(arguments) << QString::fromLatin1(arguments);
}

void tst_CheckCommand::outputThatIsLost()
{
    QFETCH(QString, arguments);
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    for (const char *redirection : { " >/dev/full", " >&-" }) {
        const Result result = run(
                { QStringLiteral("sh"), QStringLiteral("-c"),
                  QStringLiteral(TOOL_PROGRAM " ") + arguments + QLatin1String(redirection) });
        QVERIFY2(result.errors.startsWith(
                         QLatin1String(TOOL_NAME ": the output can't be written: ")),
                 redirection);
        QCOMPARE(result.exitCode, 2);
    }
}

/// The first file that is opened takes the number of a closed stream.
void tst_CheckCommand::filesAreNotPrintedInto()
{
    QCOMPARE(run({ QStringLiteral("sh"), QStringLiteral("-c"),
                   QStringLiteral(TOOL_PROGRAM " new A -o a.thm >&-") })
                     .exitCode,
             2);
    QFile theme(folder() + QStringLiteral("/a.thm"));
    QVERIFY(theme.open(QIODevice::ReadOnly));
    const QByteArray text = theme.readAll();
    QVERIFY2(text.endsWith("\n}\n"), text.constData());
}

void tst_CheckCommand::codes()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "", "global": { "radius": -1 }, "a": {} })");
    const auto codesOf = [this](const char *arguments) {
        QStringList codes;
        static const QRegularExpression code(QStringLiteral("\\[([a-z0-9-]+)\\]\\n"));
        QRegularExpressionMatchIterator matches = code.globalMatch(run(tool(arguments)).output);
        while (matches.hasNext())
            codes.append(matches.next().captured(1));
        codes.sort();
        return codes;
    };
    QCOMPARE(codesOf("check t"), words("bad-radius empty-scope empty-title"));
    QCOMPARE(codesOf("check t --disable bad-radius"), words("empty-scope empty-title"));
    QCOMPARE(codesOf("check t --disable bad-radius --disable empty-title"), words("empty-scope"));
    QCOMPARE(codesOf("check t --disable bad-radius,empty-title"), words("empty-scope"));
    QCOMPARE(codesOf("check t --only bad-radius,empty-title"), words("bad-radius empty-title"));
    QCOMPARE(codesOf("check t --only bad-radius,empty-title --disable bad-radius"),
             words("empty-title"));

    const Result list = run(tool("check --list-codes"));
    QCOMPARE(list.exitCode, 0);
    QVERIFY(list.output.contains(
            QRegularExpression(QStringLiteral("(^|\\n)bad-radius +error +[a-z ,]+\\n"))));
}

void tst_CheckCommand::formats()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "" })");
    const Result json = run(tool("check t --format json"));
    QCOMPARE(json.exitCode, 1);
    const QJsonObject object = QJsonDocument::fromJson(json.output.toUtf8()).object();
    QCOMPARE(object.value(QLatin1String("problems")).toArray().size(), 1);

    const Result sarif = run(tool("check t --format sarif"));
    QCOMPARE(sarif.exitCode, 1);
    const QJsonObject log = QJsonDocument::fromJson(sarif.output.toUtf8()).object();
    QCOMPARE(log.value(QLatin1String("version")).toString(), QStringLiteral("2.1.0"));

    const Result failed = run(tool("check nowhere --format json"));
    QCOMPARE(failed.exitCode, 2);
    QCOMPARE(QJsonDocument::fromJson(failed.output.toUtf8())
                     .object()
                     .value(QLatin1String("failures"))
                     .toArray()
                     .size(),
             1);
}

void tst_CheckCommand::noColorsWhenPiped()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "" })");
    const QString plain = QStringLiteral(
            "t/a.thm:1:12: error: the `title` is empty, so nothing can "
            "find the theme [empty-title]\n1 theme: 1 error\n");
    QCOMPARE(run(tool("check t"), { QStringLiteral("TERM=xterm") }).output, plain);
    QCOMPARE(run(tool("check t --color never")).output, plain);
    QVERIFY(run(tool("check t --color always")).output.contains(QLatin1String("\033[1;31merror")));
}

void tst_CheckCommand::colorsAndSourceOnATerminal()
{
    QString why;
    if (!hasTerminals(&why))
        QSKIP(qPrintable(why));
    write(QStringLiteral("t/a.thm"), R"({ "title": "" })");
    const Result result = runOnTerminal(QStringLiteral("check t"),
                                        { QStringLiteral("TERM=xterm") });
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output,
             QStringLiteral("\033[1mt/a.thm:1:12:\033[0m \033[1;31merror:\033[0m the `title` is "
                            "empty, so nothing can find the theme [empty-title]\n"
                            "    { \"title\": \"\" }\n"
                            "    \033[32m           ^~\033[0m\n"
                            "1 theme: 1 error\n"));
}

void tst_CheckCommand::colorsAreLeftOutOnRequest_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("variable");
    QTest::newRow("--color never")
            << QStringLiteral("check t --color never") << QStringLiteral("TERM=xterm");
    QTest::newRow("NO_COLOR") << QStringLiteral("check t") << QStringLiteral("NO_COLOR=1");
    QTest::newRow("dumb terminal") << QStringLiteral("check t") << QStringLiteral("TERM=dumb");
}

void tst_CheckCommand::colorsAreLeftOutOnRequest()
{
    QString why;
    if (!hasTerminals(&why))
        QSKIP(qPrintable(why));
    QFETCH(QString, arguments);
    QFETCH(QString, variable);
    write(QStringLiteral("t/a.thm"), R"({ "title": "" })");
    const Result result = runOnTerminal(arguments, { variable });
    QVERIFY(!result.output.contains(QLatin1Char('\033')));
    // The source is there all the same.
    QVERIFY(result.output.contains(QLatin1String("\n               ^~\n")));
}

void tst_CheckCommand::warningsAsErrors()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A", "a": {}, "global":
        { "fonts": { "main": { "family": "No Such Family", "pointSize": 16 } } } })");
    QVERIFY(run(tool("check t")).output.endsWith(QLatin1String("1 theme: 1 warning, 1 note\n")));
    const Result result = run(tool("check t --werror"));
    QVERIFY(result.output.endsWith(QLatin1String("1 theme: 1 error, 1 note\n")));
    QVERIFY(result.output.contains(QLatin1String("error: the class `a` is empty")));
}

void tst_CheckCommand::contrastLevels()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A", "global": { "colors": {
        "foreground": "#666666", "lighterForeground": "#666666", "darkerForeground": "#666666",
        "background": "#ffffff", "lighterBackground": "#ffffff", "darkerBackground": "#ffffff"
        } } })");
    QCOMPARE(run(tool("check t")).exitCode, 0);
    QCOMPARE(run(tool("check t --contrast AA")).exitCode, 0);
    QCOMPARE(run(tool("check t --contrast AAA")).output.count(QLatin1String("; texts need 7 [")),
             3);
    write(QStringLiteral("t/a.thm"), R"({ "title": "A", "global": { "colors": {
        "foreground": "#ffffff", "background": "#ffffff" } } })");
    QCOMPARE(run(tool("check t --contrast aa")).exitCode, 1);
    QCOMPARE(run(tool("check t --contrast off")).exitCode, 0);
}

void tst_CheckCommand::importPaths()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    write(QStringLiteral("t/styles/Card.qml"), "import Acme 1.0\nPart {}\n");
    write(QStringLiteral("modules/Acme/qmldir"), "module Acme\nPart 1.0 Part.qml\n");
    write(QStringLiteral("modules/Acme/Part.qml"), "import QtQml 2.0\nQtObject {}\n");
    QCOMPARE(run(tool("check t")).exitCode, 1);
    const Result result = run(tool("check t --import modules"));
    QCOMPARE(result.output, QStringLiteral("1 theme: no problem\n"));
}

void tst_CheckCommand::explains()
{
    const Result result = run(tool("explain bad-radius"));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.startsWith(QLatin1String("bad-radius (error): ")));
    QVERIFY2(result.output.contains(QRegularExpression(
                     QStringLiteral(
                             "\n\nExample:\n\n    \\{[^\n]*\"radius\": 4.5.*\n\nMended:\n\n    "
                             "\\{.*\\}\n$"),
                     QRegularExpression::DotMatchesEverythingOption)),
             qPrintable(result.output));
}

void tst_CheckCommand::ownThemesAreClean_data()
{
    QTest::addColumn<QString>("themes");
    QTest::addColumn<QString>("summary");
    const auto row = [](const char *name, const char *folder, const char *summary) {
        QTest::newRow(name) << QStringLiteral(TAVOLINS_SOURCE_DIR "/") + QLatin1String(folder)
                            << QString::fromLatin1(summary);
    };
    row("bundled", "themes", "5 themes: no problem\n");
    row("of the example", "examples/settings/themes", "2 themes: no problem\n");
    row("of the example, with other styles", "examples/settings/themes/lantern",
        "1 theme: no problem\n");
}

void tst_CheckCommand::ownThemesAreClean()
{
    QFETCH(QString, themes);
    QFETCH(QString, summary);
    const Result result = run({ QStringLiteral(TOOL_PROGRAM), QStringLiteral("check"), themes });
    QCOMPARE(result.output, summary);
    QCOMPARE(result.exitCode, 0);
}

/// What a reader copies first: alone, and with what the second page adds to it.
void tst_CheckCommand::themesOfThePagesAreClean()
{
    static const QRegularExpression block(QStringLiteral("```json\n(.*)```"),
                                          QRegularExpression::DotMatchesEverythingOption
                                                  | QRegularExpression::InvertedGreedinessOption);
    const auto writeFirst = [this](const char *page, const char *file) {
        write(QLatin1String(file), block.match(contentOf(page)).captured(1).toUtf8());
    };
    writeFirst("README.md", "t/harbour.thm");
    QCOMPARE(run(tool("check t")).output, QStringLiteral("1 theme: no problem\n"));
    writeFirst("docs/using.md", "t/night.thm");
    QCOMPARE(run(tool("check t")).output, QStringLiteral("2 themes: no problem\n"));
}

void tst_CheckCommand::memoryIsFlatInTheNumberOfFiles()
{
    const QByteArray scope = R"({ "colors": { "foreground": "#102030", "background": "#ffffff",
        "lighterForeground": "#203040", "darkerForeground": "#000000",
        "lighterBackground": "#ffffff", "darkerBackground": "#e8e8e8" },
        "fonts": { "main": { "family": "DejaVu Sans", "pointSize": 16 } } })";
    const auto peak = [&](const char *name, int count) {
        for (int i = 0; i < count; ++i) {
            QByteArray text = "{ \"title\": \"" + QByteArray::number(i)
                    + "\", \"global\": " + scope;
            for (const char *classname : { "a", "b", "c", "d", "e", "f", "g", "h", "i" })
                text += ", \"" + QByteArray(classname) + "\": " + scope;
            write(QStringLiteral("%1/%2.thm").arg(QLatin1String(name)).arg(i), text + " }");
        }
        return peakKilobytes(name);
    };
    const int few = peak("few", 100);
    const int many = peak("many", 1000);
    QVERIFY2(few > 0 && many - few < 4 * 900,
             qPrintable(
                     QStringLiteral("100 themes: %1 KB, 1,000 themes: %2 KB").arg(few).arg(many)));
}

/// The session on the README: the file that it shows, and what it shows of the check.
void tst_CheckCommand::readmeSession()
{
    static const QRegularExpression session(
            QStringLiteral("```console\n\\$ cat broken/harbour.thm\n(.*)"
                           "\\$ tavolins check broken\n(.*)```"),
            QRegularExpression::DotMatchesEverythingOption
                    | QRegularExpression::InvertedGreedinessOption);
    const QRegularExpressionMatch match = session.match(contentOf("README.md"));
    QVERIFY(match.hasMatch());
    write(QStringLiteral("broken/harbour.thm"), match.captured(1).toUtf8());
    QString output = run(tool("check broken --color always")).output;
    output.remove(QRegularExpression(QStringLiteral("\033\\[[0-9;]*m")));
    QCOMPARE(output, match.captured(2));
}

void tst_CheckCommand::needsNoDisplay()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    const Result result = run(
            tool("check t"),
            { QStringLiteral("QT_QPA_PLATFORM=xcb"), QStringLiteral("DISPLAY=:4242") });
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
}

void tst_CheckCommand::everyOptionIsInManualAndCompletions()
{
    static const QRegularExpression subcommand(QStringLiteral("^  ([a-z]+) "),
                                               QRegularExpression::MultilineOption);
    QString help;
    QRegularExpressionMatchIterator subcommands = subcommand.globalMatch(
            run(tool("--help")).output);
    while (subcommands.hasNext()) {
        const QString name = subcommands.next().captured(1);
        help += run({ QStringLiteral(TOOL_PROGRAM), name, QStringLiteral("--help") }).output;
        QVERIFY2(contentOf("tool/tavolins.1").contains(QStringLiteral(".B tavolins ") + name),
                 qPrintable(name));
        for (const char *file : { "tool/completions/tavolins.bash", "tool/completions/_tavolins",
                                  "tool/completions/tavolins.fish" })
            QVERIFY2(contentOf(file).contains(name), file);
    }
    QVERIFY(help.contains(QLatin1String("--werror")));
    static const QRegularExpression option(QStringLiteral("--([a-z-]+)"));
    QRegularExpressionMatchIterator options = option.globalMatch(help);
    while (options.hasNext()) {
        const QString name = options.next().captured(1);
        QVERIFY2(contentOf("tool/tavolins.1")
                         .contains(QString(name).replace(QLatin1String("-"), QLatin1String("\\-"))),
                 qPrintable(name));
        for (const char *file : { "tool/completions/tavolins.bash", "tool/completions/_tavolins",
                                  "tool/completions/tavolins.fish" })
            QVERIFY2(contentOf(file).contains(name), file);
    }
}

TAVOLINS_TEST_MAIN(tst_CheckCommand)
#include "tst_checkcommand.moc"
