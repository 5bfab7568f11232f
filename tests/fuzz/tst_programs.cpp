#include "fuzz/programs/driver.h"
#include "fuzz/programs/programrun.h"
#include "fuzz/programs/writer.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

namespace {

/// A program whose one item shows the theme, with \a content in it and \a functions beside it.
QByteArray programWith(const QByteArray &content, const QByteArray &functions)
{
    return "Item { id: root\nproperty int tick: 0\n"
           "Item { id: one; property QtObject mark: Mark {}\n%PROBE%\n"
            + content + "\n}\n" + functions + "\n}\n";
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void addFiles(const char *folderName)
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(TAVOLINS_SOURCE_DIR "/fuzz/") + QLatin1String(folderName)
                      + QLatin1String("/programs"));
    const QStringList names = folder.entryList(QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder.filePath(name);
}

} // namespace

/// The fuzzer of QML programs: that it sees each kind of fault, that a seed means the same program
/// for good, and the programs that once showed a fault.
class tst_Programs : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void seesTheFault_data();
    void seesTheFault();
    void driverSurvivesACrash();
    void sameSeedSameProgram();
    void everythingIsWritten_data();
    void everythingIsWritten();
    void droppedPartsLeaveAProgram();
    void regressions_data();
    void regressions();
    void limitsOfQt_data();
    void limitsOfQt();
};

void tst_Programs::seesTheFault_data()
{
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<QStringList>("expected");

    const auto row = [](const char *name, const QByteArray &program, const QStringList &kinds) {
        QTest::newRow(name) << program << kinds;
    };
    row("none",
        programWith("Theme.classnames: root.tick ? \"quiet\" : \"warning\"",
                    "function step0() { root.tick++ }\n"
                    "function step1() { ThemeManager.currentIndex = fuzz.row(2) }"),
        {});
    row("a color that is written over",
        programWith("", "function step0() { one.shownForeground = \"red\" }"),
        { QStringLiteral("look") });
    row("a font that is written over",
        programWith("", "function step0() { one.shownH4Font = Qt.font({ pointSize: 3 }) }"),
        { QStringLiteral("look") });
    row("a radius that is written over",
        programWith("", "function step0() { one.shownRadius = 1000 }"), { QStringLiteral("look") });
    row("colors that are kept for too long",
        programWith("property color heldForeground: \"red\"", ""), { QStringLiteral("look") });
    row("an object left over", programWith("", "function step0() { fuzz.leak() }"),
        { QStringLiteral("objects") });
    row("a connection left over", programWith("", "function step0() { fuzz.listen() }"),
        { QStringLiteral("connections") });
    row("a line on the log", programWith("", "function step0() { console.log(\"line\") }"),
        { QStringLiteral("log") });
    row("an error in a handler",
        programWith("Theme.onNeedUpdate: nobody.knows()", "function step0() { fuzz.reload() }"),
        { QStringLiteral("log") });
    row("no program", "Item {", { QStringLiteral("document") });
}

void tst_Programs::seesTheFault()
{
    QFETCH(const QByteArray, program);
    QFETCH(const QStringList, expected);
    QStringList kinds;
    const QStringList problems = runProgram(program, Subject::Plugin);
    for (const QString &problem : problems)
        kinds.append(problem.left(problem.indexOf(QLatin1Char(':'))));
    kinds.removeDuplicates();
    QVERIFY2(kinds == expected, qPrintable(problems.join(QLatin1Char('\n'))));
}

void tst_Programs::driverSurvivesACrash()
{
    const Driver driver(QStringLiteral(TAVOLINS_FUZZ_PROGRAMS), folder(), Subject::Plugin);
    const QString crashing = write(QStringLiteral("crash.qml"),
                                   programWith("", "function step0() { fuzz.crash() }"));
    const Driver::Outcome outcome = driver.runFile(crashing);
    QVERIFY2(outcome.failure.startsWith(QLatin1String("crash")), qPrintable(outcome.failure));
    QVERIFY2(outcome.output.contains(QLatin1String("crashed on purpose")),
             qPrintable(outcome.output));
    const QString leaking = write(QStringLiteral("leak.qml"),
                                  programWith("", "function step0() { fuzz.leak() }"));
    QCOMPARE(driver.runFile(leaking).failure, QStringLiteral("objects"));
    const QString sound = write(QStringLiteral("sound.qml"), programWith("", ""));
    QCOMPARE(driver.runFile(sound).failure, QString());
}

void tst_Programs::sameSeedSameProgram()
{
    const QByteArray text = ProgramWriter(1).text();
    QCOMPARE(ProgramWriter(1).text(), text);
    QVERIFY(ProgramWriter(2).text() != text);
}

void tst_Programs::everythingIsWritten_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char *what : { "QtObject {",
                              "Item {",
                              "Text {",
                              "Rectangle {",
                              "Loader {",
                              "Repeater {",
                              "ListView {",
                              "Popup {",
                              "Menu {",
                              "Instantiator {",
                              "Window {",
                              "TabBar {",
                              "SwipeView {",
                              "StackView {",
                              "TabButton {",
                              "MenuItem {",
                              "Theme.classnames: root.tick",
                              "Theme.radius: ",
                              "Theme.title: ",
                              "getStyle",
                              "hasClassname",
                              "complementaryColor",
                              "heldForeground",
                              "Theme.onThemeObjectChanged",
                              "onNeedUpdate",
                              "Component.onDestruction: fuzz.note",
                              "target: Theme.colors",
                              "target: ThemeManager",
                              "onShownForegroundChanged",
                              "fuzz.themeOf",
                              "fuzz.deleteTheme",
                              "fuzz.deleteGlobalTheme",
                              "ThemeManager.currentIndex = ",
                              "ThemeManager.setCurrent",
                              "ThemeManager.loadThemes",
                              "fuzz.reload()",
                              "fuzz.save()",
                              "fuzz.kill(o",
                              "fuzz.kill(root.heard)",
                              "fuzz.killAny",
                              "fuzz.deleteLater",
                              "fuzz.disconnect",
                              "fuzz.reparent",
                              "fuzz.loop",
                              "gc()",
                              "root.tick++",
                              "Qt.callLater",
                              ".removeItem(o",
                              ".takeItem",
                              ".addItem",
                              ".push(m",
                              ".pop(",
                              ".clear()",
                              ".open()",
                              ".active = ",
                              ".model = ",
                              ".visible = ",
                              "make()",
                              "destroyMade()",
                              ".createObject(null)",
                              ".createObject(root)" }) {
        QTest::newRow(what) << QByteArray(what);
    }
}

/// Each thing that programs may consist of is in some of the first ones.
void tst_Programs::everythingIsWritten()
{
    QFETCH(const QByteArray, what);
    const quint64 programs = 500;
    // What all programs have is in their heads.
    const int everywhere = ProgramWriter(1)
                                   .text()
                                   .left(ProgramWriter(1).text().indexOf("Component {"))
                                   .count(what);
    for (quint64 seed = 1; seed <= programs; ++seed) {
        if (ProgramWriter(seed).text().count(what) > everywhere)
            return;
    }
    QFAIL("not in any program");
}

/// Whatever the shrinking drops, the rest is a program.
void tst_Programs::droppedPartsLeaveAProgram()
{
    for (quint64 seed = 1; seed <= 12; ++seed) {
        const int parts = ProgramWriter(seed).partCount();
        QSet<int> dropped;
        for (int part = int(seed % 3); part < parts; part += 3)
            dropped.insert(part);
        const QByteArray text = ProgramWriter(seed, dropped).text();
        QVERIFY(text.size() < ProgramWriter(seed).text().size());
        const QStringList problems = runProgram(text, Subject::Plugin);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    }
}

void tst_Programs::regressions_data()
{
    addFiles("regressions");
}

void tst_Programs::regressions()
{
    QFETCH(const QString, path);
    const QStringList problems = runProgram(contentOf(path), Subject::Plugin);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

void tst_Programs::limitsOfQt_data()
{
    addFiles("limits");
}

/// What the fuzzer keeps its programs from fails without the plugin, too.
void tst_Programs::limitsOfQt()
{
    QFETCH(const QString, path);
    const QStringList survivedByQt6 = {
        QStringLiteral("delegate-gone-while-completing.qml"),
        QStringLiteral("garbage-made-in-sweep.qml"),
        QStringLiteral("model-set-while-creating.qml"),
        QStringLiteral("stack-cleared-while-clearing.qml"),
    };
    if (QT_VERSION_MAJOR > 5 && survivedByQt6.contains(QFileInfo(path).fileName()))
        QSKIP("a limit of Qt 5");
    const Driver driver(QStringLiteral(TAVOLINS_FUZZ_PROGRAMS), folder(), Subject::StandIn);
    const Driver::Outcome outcome = driver.runFile(path);
    QVERIFY2(!outcome.failure.isEmpty(), "holds without the plugin");
    QVERIFY2(outcome.failure != QLatin1String("document"), qPrintable(outcome.output));
}

TAVOLINS_TEST_MAIN(tst_Programs)
#include "tst_programs.moc"
