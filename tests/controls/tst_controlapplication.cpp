#include "controls/samples.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

/// Applications with controls: how they name the style, and how they end.
class tst_ControlApplication : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void namingTheStyle_data();
    void namingTheStyle();
    void shippingTheStyle();
    void ending_data();
    void ending();

private:
    QStringList makingAButton();
    void run(const QString &program, const QStringList &arguments,
             const QProcessEnvironment &environment, QString *output) const;
};

namespace {

const QString qmlFolder = QStringLiteral(TAVOLINS_QML_IMPORT_PATH);
const QString styleFolder = qmlFolder + QStringLiteral("/" TAVOLINS_CONTROLS_DIR);
const QString styleName = QStringLiteral("Tavolins");

/// What ctest has chosen for tests left out.
QProcessEnvironment surroundings()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QUICK_CONTROLS_STYLE"));
    environment.remove(QStringLiteral("QML2_IMPORT_PATH"));
    return environment;
}

/// All controls, popups opened, and a window that belongs to JavaScript.
QByteArray page(const QByteArray &root)
{
    QByteArray text = Samples::imports() + root
            + " {\nid: window; visible: true; width: 640; height: 400\nreadonly property url "
              "iconFile: \"file://"
            + styleFolder.toUtf8() + "/impl/images/plus.png\"\n"
            + "property var other\n"
              "Component { id: second; ApplicationWindow { visible: true; Button { text: \"Text\"; "
              "Theme.classnames: \"danger\" } } }\n"
              "Component.onCompleted: other = second.createObject()\n"
              "Loader { sourceComponent: Button { ToolTip.visible: Window.window; ToolTip.text: "
              "\"Tip\" } "
              "}\n"
              "ListView { model: 3; delegate: ItemDelegate { text: index } }\n";
    QByteArray popups;
    const QStringList controls = Samples::controls();
    text += "Flow { anchors.fill: parent\n";
    for (const QString &control : controls) {
        if (control != QLatin1String("ApplicationWindow"))
            (Samples::isPopup(control) ? popups : text) += Samples::looks(control).join();
    }
    return text + "}\n" + popups + "}\n";
}

} // namespace

/// The last steps of an application that tells which style it has.
QStringList tst_ControlApplication::makingAButton()
{
    return { QStringLiteral("create:")
                     + write(QStringLiteral("button.qml"),
                             "import QtQuick.Controls 2.15\nButton { }\n"),
             QStringLiteral("tell") };
}

/// Runs \a program to its end. A line on its log, or a report of the sanitizers, fails the test.
void tst_ControlApplication::run(const QString &program, const QStringList &arguments,
                                 const QProcessEnvironment &environment, QString *output) const
{
    QProcess process;
    process.setWorkingDirectory(folder());
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(QString::fromUtf8(process.readAllStandardError()), QString());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    *output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void tst_ControlApplication::namingTheStyle_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *name, const QStringList &variables, const QStringList &steps,
                        bool isFound = true, const QStringList &options = QStringList()) {
        QTest::newRow(name) << variables << steps << options << isFound;
    };
    const QString fromEnvironment = QStringLiteral("QML2_IMPORT_PATH=") + qmlFolder;
    const QString byName = QStringLiteral("QT_QUICK_CONTROLS_STYLE=") + styleName;
    const QString byConf = QStringLiteral("QT_QUICK_CONTROLS_CONF=");
    const QString app = QStringLiteral("app");
    const QString engine = QStringLiteral("engine");
    const QString import = QStringLiteral("import:") + qmlFolder;
    const QString style = QStringLiteral("style:") + styleName;

    row("variable", { fromEnvironment, byName }, { app, engine });
    row("setStyle before the application", { fromEnvironment }, { style, app, engine });
    row("setStyle after the engine", { fromEnvironment }, { app, engine, style });
    row("option", { fromEnvironment }, { app, engine }, true,
        { QStringLiteral("-style"), styleName });
    row("qtquickcontrols2.conf", { fromEnvironment, byConf + QStringLiteral("named.conf") },
        { app, engine });
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    const QString styles = qmlFolder + QStringLiteral("/QtQuick/Controls.2");
    const QString path = QStringLiteral("path:") + styles;
    row("any capitals", { fromEnvironment }, { app, style.toLower(), engine });
    row("addStylePath", {}, { app, path, style, engine, import });
    row("addStylePath after setStyle", {}, { style, app, engine, import, path });
    row("QT_QUICK_CONTROLS_STYLE_PATH",
        { byName, QStringLiteral("QT_QUICK_CONTROLS_STYLE_PATH=") + styles },
        { app, engine, import });
    row("folder", {}, { app, QStringLiteral("style:") + styleFolder, engine, import });
    row("folder in the conf file", { byConf + QStringLiteral("folder.conf") },
        { app, engine, import });
    row("not by addImportPath alone", {}, { app, style, engine, import }, false);
    row("not with a folder of its name beside the conf file",
        { fromEnvironment, byConf + QStringLiteral("beside/named.conf") }, { app, engine }, false);
#else
    row("addImportPath", {}, { app, style, engine, import });
#endif
}

void tst_ControlApplication::namingTheStyle()
{
    QFETCH(QStringList, variables);
    QFETCH(QStringList, steps);
    QFETCH(QStringList, options);
    QFETCH(bool, isFound);
    const QByteArray named = "[Controls]\nStyle=Tavolins\n";
    write(QStringLiteral("named.conf"), named);
    write(QStringLiteral("folder.conf"), "[Controls]\nStyle=" + styleFolder.toUtf8() + "\n");
    write(QStringLiteral("beside/named.conf"), named);
    QVERIFY(QDir(folder()).mkpath(QStringLiteral("beside/tavolins")));
    QProcessEnvironment environment = surroundings();
    for (const QString &variable : qAsConst(variables)) {
        environment.insert(variable.section(QLatin1Char('='), 0, 0),
                           variable.section(QLatin1Char('='), 1));
    }
    QString drawnBy;
    run(QStringLiteral(TAVOLINS_CONTROLSAPP), steps + makingAButton() + options, environment,
        &drawnBy);
    if (!QTest::currentTestFailed())
        QCOMPARE(drawnBy == styleFolder + QStringLiteral("/Button.qml"), isFound);
}

/// Qt looks in the application's own folder: what lies there needs no path.
void tst_ControlApplication::shippingTheStyle()
{
    const QString program = folder() + QStringLiteral("/application");
    QVERIFY(QFile::copy(QStringLiteral(TAVOLINS_CONTROLSAPP), program));
    QDirIterator it(qmlFolder, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString file = it.next();
        const QString copy = folder() + file.mid(qmlFolder.size());
        QVERIFY(QFileInfo(copy).dir().mkpath(QStringLiteral(".")));
        QVERIFY(QFile::copy(file, copy));
    }
    QString drawnBy;
    run(program,
        QStringList{ QStringLiteral("style:") + styleName, QStringLiteral("app"),
                     QStringLiteral("engine") }
                + makingAButton(),
        surroundings(), &drawnBy);
    if (!QTest::currentTestFailed())
        QCOMPARE(drawnBy, folder() + QStringLiteral("/" TAVOLINS_CONTROLS_DIR "/Button.qml"));
}

void tst_ControlApplication::ending_data()
{
    QTest::addColumn<QStringList>("steps");
    const auto row = [](const char *name, const char *steps) {
        QTest::newRow(name) << QString::fromLatin1(steps).split(QLatin1Char(' '));
    };
    row("quit", "load:window.qml run");
    row("exit in a handler", "load:window.qml exit");
    row("without an event loop", "load:window.qml");
    row("windows are deleted first", "create:window.qml run");
    row("engine is deleted first", "create:window.qml run delete");
    row("engine is deleted in between", "create:window.qml run delete run");
    row("view is deleted first", "view:item.qml run");
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // Qt 6.4 evaluates the bindings of a view once more while its engine ends, and crashes where
    // one of them reads an object of JavaScript's. A property with Component.createObject() does
    // it, in any style.
    row("engine of a view is deleted first", "view:item.qml run delete");
    row("engine of a view is deleted in between", "view:item.qml run delete run");
#endif
    row("singletons hold windows", "load:singletons.qml run");
}

/// No line on the log, whoever dies first.
void tst_ControlApplication::ending()
{
    QFETCH(QStringList, steps);
    write(QStringLiteral("window.qml"), page("ApplicationWindow"));
    write(QStringLiteral("item.qml"), page("Page"));
    // The order in which an engine destroys its singletons is that of a hash.
    QByteArray singletons;
    QByteArray uses;
    for (const char *name : { "First", "Second", "Third", "Fourth", "Fifth", "Sixth" }) {
        write(QStringLiteral("singletons/%1.qml").arg(QLatin1String(name)),
              "pragma Singleton\n" + page("ApplicationWindow"));
        singletons += QByteArray("singleton ") + name + " 1.0 " + name + ".qml\n";
        uses += QByteArray(name) + ", ";
    }
    write(QStringLiteral("singletons/qmldir"), singletons);
    write(QStringLiteral("singletons.qml"),
          "import QtQml 2.15\nimport \"singletons\"\nQtObject { property var windows: [" + uses
                  + "] }\n");

    QProcessEnvironment environment = surroundings();
    environment.insert(QStringLiteral("QML2_IMPORT_PATH"), qmlFolder);
    // Qt Quick leaves the images behind that it still has in store as a program ends, and Controls
    // the handles of a SplitView, in any style.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    QString output;
    run(QStringLiteral(TAVOLINS_CONTROLSAPP),
        QStringList{ QStringLiteral("style:") + styleName, QStringLiteral("app"),
                     QStringLiteral("engine") }
                + steps,
        environment, &output);
}

TAVOLINS_TEST_MAIN(tst_ControlApplication)
#include "tst_controlapplication.moc"
