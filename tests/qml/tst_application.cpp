#include "manager/thememanager.h"
#include "qml/qmltestcase.h"
#include "support/flatmodel.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtCore/QSaveFile>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

/// What applications do with the module, in windows of a real engine.
class tst_Application : public QmlTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void attachedFollows_data();
    void attachedFollows();
    void loaderToggledByAHandler();
    void delegatesRecycledWhileSwitching();
    void switchInABinding();

    void modelInAListView();
    void rolesInARepeater();
    void pointerSurvivesGarbageCollection();

    void loadFromQml();
    void currentFromQml();
    void currentIndexFromQml();
    void currentChangedFromQml();

    void writeColors();
    void writeFonts();
    void writeRadius();
    void writeClassnames();
    void writeTitle();
    void readOnlyMembers_data();
    void readOnlyMembers();
    void callSlots();

    void stylesThroughALoader();
    void styleFollowsTheTheme();

    void reloadInPlace();
    void reloadByRename();
    void extendsLaterFile();
    void resourceThemes();
    void resourceStyle();

private:
    QObject *show(const QByteArray &body);
    QString loadPair(int lightRadius = 2, int darkRadius = 8);

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickView> m_view;
    QString m_light;
    QString m_dark;
};

namespace {

const QColor lightText(0x20, 0x20, 0x20);
const QColor darkText(0xe0, 0xe0, 0xe0);
const QColor lightHeader(0x00, 0x00, 0xaa);
const QColor darkHeader(0xaa, 0xaa, 0xff);

QByteArray pairText(const QString &title, int radius, const QColor &text, const QColor &header,
                    int points)
{
    return "{\"title\": \"" + title.toUtf8() + "\", \"global\": {\"radius\": "
            + QByteArray::number(radius) + ", \"colors\": {\"foreground\": \""
            + text.name().toUtf8() + "\"}, \"fonts\": {\"main\": {\"pointSize\": "
            + QByteArray::number(points) + "}}}, \"header\": {\"colors\": {\"foreground\": \""
            + header.name().toUtf8() + "\"}}}";
}

QColor foreground(const QObject *probe)
{
    return probe->property("fg").value<QColor>();
}

ThemeManager &manager()
{
    return *ThemeManager::getInstance();
}

void switchTo(const QString &title)
{
    manager().setCurrent(manager().themeFromName(title));
}

} // namespace

void tst_Application::initTestCase()
{
    ThemeManager::getInstance();
    addModule(QStringLiteral("Tavolins"));
}

void tst_Application::cleanup()
{
    m_view.reset();
    m_engine.reset();
    park();
    TestCase::cleanup();
}

/// Shows a window with an item whose contents are \a body; returns the item, whose id is "root".
QObject *tst_Application::show(const QByteArray &body)
{
    m_engine = newEngine();
    m_view.reset(new QQuickView(m_engine.get(), nullptr));
    const QString path = write(QStringLiteral("Main.qml"),
                               R"(
        import QtQuick 2.15
        import QtQuick.Window 2.15
        import QtQuick.Controls 2.15
        import QtQml 2.15
        import Tavolins 1.0
        Item {
            id: root
            width: 300
            height: 300
            property QtObject probe: null
        )" + body + "\n}\n");
    m_view->setSource(QUrl::fromLocalFile(path));
    if (m_view->status() != QQuickView::Ready)
        return nullptr;
    m_view->show();
    if (!QTest::qWaitForWindowExposed(m_view.get()))
        return nullptr;
    return m_view->rootObject();
}

/// Writes a light and a dark theme, loads them and makes the light one current. Returns the path
/// of the light one's file.
QString tst_Application::loadPair(int lightRadius, int darkRadius)
{
    m_light = uniqueTitle("Light");
    m_dark = uniqueTitle("Dark");
    QString path = write(QStringLiteral("themes/light.thm"),
                         pairText(m_light, lightRadius, lightText, lightHeader, 20));
    write(QStringLiteral("themes/dark.thm"),
          pairText(m_dark, darkRadius, darkText, darkHeader, 40));
    manager().loadThemes(folder() + QLatin1String("/themes"), m_light);
    return path;
}

void tst_Application::attachedFollows_data()
{
    QTest::addColumn<QByteArray>("body");

    // %1 stands for the members that make an object the probe.
    QTest::newRow("Item") << QByteArray("Item { %1 }");
    QTest::newRow("the root's own child property") << QByteArray("data: [ Rectangle { %1 } ]");
    QTest::newRow("QtObject") << QByteArray("property QtObject o: QtObject { %1 }");
    QTest::newRow("Popup") << QByteArray("Popup { visible: true; %1 }");
    QTest::newRow("item in a Popup") << QByteArray("Popup { visible: true; Item { %1 } }");
    QTest::newRow("closed Popup") << QByteArray("Popup { visible: false; %1 }");
    QTest::newRow("Menu") << QByteArray("Menu { visible: true; MenuItem { %1 } }");
    QTest::newRow("ToolTip") << QByteArray("ToolTip { visible: true; text: \"x\"; %1 }");
    QTest::newRow("Drawer") << QByteArray("Drawer { visible: true; width: 50; height: 50; %1 }");
    QTest::newRow("Window") << QByteArray("Window { visible: true; width: 50; height: 50; %1 }");
    QTest::newRow("item in a Window")
            << QByteArray("Window { visible: true; width: 50; height: 50; Item { %1 } }");
    QTest::newRow("delegate of a ListView")
            << QByteArray("ListView { anchors.fill: parent; model: 1; delegate: Item { height: 20; "
                          "width: 20; %1 } }");
    QTest::newRow("delegate of a Repeater")
            << QByteArray("Column { Repeater { model: 1; delegate: Item { %1 } } }");
    QTest::newRow("object of an Instantiator")
            << QByteArray("Instantiator { model: 1; delegate: QtObject { %1 } }");
    QTest::newRow("Loader") << QByteArray("Loader { sourceComponent: Item { %1 } }");
    QTest::newRow("Loader, not at once")
            << QByteArray("Loader { asynchronous: true; sourceComponent: Item { %1 } }");
    QTest::newRow("created by a script")
            << QByteArray("Component { id: c; Item { %1 } } "
                          "Component.onCompleted: c.createObject(root)");
    QTest::newRow("without a parent")
            << QByteArray("property var kept; Component { id: c; QtObject { %1 } } "
                          "Component.onCompleted: kept = c.createObject(null)");
}

void tst_Application::attachedFollows()
{
    QFETCH(QByteArray, body);

    loadPair();
    body.replace("%1", R"(
        id: probe
        property color fg: Theme.colors.foreground
        property font face: Theme.fonts.mainFont
        property int rounding: Theme.radius
        property string names: ""
        Theme.classnames: names
        Component.onCompleted: root.probe = probe
    )");
    const QObject *root = show(body);
    QVERIFY(root);
    QTRY_VERIFY(root->property("probe").value<QObject *>());
    QObject *probe = root->property("probe").value<QObject *>();
    const auto points = [&] { return probe->property("face").value<QFont>().pointSizeF(); };

    QCOMPARE(foreground(probe), lightText);
    QCOMPARE(probe->property("rounding").toInt(), 2);
    QCOMPARE(points(), 15.0);

    switchTo(m_dark);
    QCOMPARE(foreground(probe), darkText);
    QCOMPARE(probe->property("rounding").toInt(), 8);
    QCOMPARE(points(), 30.0);

    switchTo(m_light);
    const QColor edited(0x12, 0x34, 0x56);
    write(QStringLiteral("themes/light.thm"), pairText(m_light, 4, edited, lightHeader, 28));
    QTRY_COMPARE(foreground(probe), edited);
    QCOMPARE(probe->property("rounding").toInt(), 4);
    QCOMPARE(points(), 21.0);

    probe->setProperty("names", QStringLiteral("header"));
    QCOMPARE(foreground(probe), lightHeader);
    switchTo(m_dark);
    QCOMPARE(foreground(probe), darkHeader);
    QCOMPARE(probe->property("rounding").toInt(), 8);
    probe->setProperty("names", QStringLiteral("nothing"));
    QCOMPARE(foreground(probe), darkText);
}

void tst_Application::loaderToggledByAHandler()
{
    loadPair();
    QObject *root = show(R"(
        property int created: 0
        property color mine: Theme.colors.foreground
        property color inner: loader.item ? loader.item.fg : "transparent"
        onMineChanged: { loader.active = false; loader.active = true }
        Loader {
            id: loader
            sourceComponent: Item {
                property color fg: Theme.colors.foreground
                Theme.classnames: "header"
                Component.onCompleted: ++root.created
                // Toggled by its own update as well.
                onFgChanged: if (++changes === 2) loader.active = false
                property int changes: 0
            }
        })");
    QVERIFY(root);
    QCOMPARE(root->property("created").toInt(), 1);
    for (int round = 1; round <= 20; ++round) {
        switchTo(round % 2 ? m_dark : m_light);
        QCOMPARE(root->property("mine").value<QColor>(), round % 2 ? darkText : lightText);
        QCoreApplication::processEvents();
    }
    QVERIFY(root->property("created").toInt() > 10);
    deleteDeferred();
    switchTo(m_dark);
    QCOMPARE(root->property("mine").value<QColor>(), darkText);
}

void tst_Application::delegatesRecycledWhileSwitching()
{
    loadPair();
    QObject *root = show(R"(
        property int wrong: 0
        ListView {
            id: view
            objectName: "view"
            anchors.fill: parent
            model: 500
            reuseItems: true
            delegate: Item {
                property color fg: Theme.colors.foreground
                Theme.classnames: index % 2 ? "header" : ""
                height: 20
                width: 20
            }
        }
        // The first text color is what all items without a class must show.
        property color expected: Theme.colors.foreground
        function check() {
            for (let i = 0; i < view.contentItem.children.length; ++i) {
                const item = view.contentItem.children[i]
                if (item.fg !== undefined && item.Theme.classnames === ""
                        && !Qt.colorEqual(item.fg, expected))
                    ++wrong
            }
        })");
    QVERIFY(root);
    QObject *view = root->findChild<QObject *>(QStringLiteral("view"));
    QVERIFY(view);
    for (int step = 0; step < 60; ++step) {
        view->setProperty("contentY", (step * 137) % 9000);
        switchTo(step % 2 ? m_light : m_dark);
        QCoreApplication::processEvents();
        QVERIFY(QMetaObject::invokeMethod(root, "check"));
        QCOMPARE(root->property("wrong").toInt(), 0);
    }
}

void tst_Application::switchInABinding()
{
    loadPair();
    const QString light = m_light;
    const QString dark = m_dark;
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property var other: null
        property int switches: 0
        Connections {
            target: ThemeManager
            function onCurrentChanged() {
                ++root.switches
                if (root.other) {
                    const next = root.other
                    root.other = null
                    ThemeManager.current = next
                }
            }
        })");
    QVERIFY(root);
    root->setProperty("other", QVariant::fromValue<QObject *>(manager().themeFromName(light)));
    switchTo(dark);
    QCOMPARE(manager().current()->title(), light);
    QCOMPARE(root->property("switches").toInt(), 2);
    QCOMPARE(foreground(root), lightText);
}

void tst_Application::modelInAListView()
{
    FlatModel model(&manager());
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    loadPair();
    QObject *root = show(R"(
        property alias count: view.count
        function at(row) { view.positionViewAtIndex(row, ListView.Contain); view.forceLayout()
                           return view.itemAtIndex(row) }
        ListView {
            id: view
            anchors.fill: parent
            model: ThemeManager
            currentIndex: ThemeManager.currentIndex
            delegate: Text {
                property QtObject theme: pointer
                property color fg: pointer ? pointer.colors.foreground : "transparent"
                property bool chosen: ListView.isCurrentItem
                text: display === undefined ? "" : display
                height: 20
            }
        })");
    QVERIFY(root);
    const auto check = [&](int row) {
        QVariant item;
        QVERIFY(QMetaObject::invokeMethod(root, "at",
                                          Q_RETURN_ARG(QVariant, item), Q_ARG(QVariant, row)));
        const auto *delegate = item.value<QObject *>();
        QVERIFY(delegate);
        auto *theme = qobject_cast<Theme *>(delegate->property("theme").value<QObject *>());
        const QModelIndex index = manager().index(row, 0);
        QCOMPARE(theme, index.data(257).value<QObject *>());
        QCOMPARE(delegate->property("text").toString(), index.data().toString());
        if (theme)
            QCOMPARE(foreground(delegate), theme->colors()->foreground());
        QCOMPARE(delegate->property("chosen").toBool(), row == manager().currentIndex());
    };
    QCOMPARE(root->property("count").toInt(), manager().rowCount());
    for (int row = 0; row < manager().rowCount(); ++row)
        check(row);

    // New rows arrive in the view.
    const int before = manager().rowCount();
    loadPair();
    QCOMPARE(manager().rowCount(), before + 2);
    QCOMPARE(root->property("count").toInt(), manager().rowCount());
    for (int row = 0; row < manager().rowCount(); ++row)
        check(row);
    switchTo(m_dark);
    check(manager().currentIndex());
}

void tst_Application::rolesInARepeater()
{
    loadPair();
    QObject *root = show(R"(
        property var titles: []
        property var radii: []
        Repeater {
            model: ThemeManager
            delegate: Item {
                Component.onCompleted: if (model.pointer) {
                    root.titles.push(model.display)
                    root.radii.push(model.pointer.radius)
                }
            }
        })");
    QVERIFY(root);
    QVariantList titles;
    QVariantList radii;
    for (int row = 0; row < manager().rowCount(); ++row) {
        const auto *theme = qobject_cast<Theme *>(
                manager().index(row, 0).data(257).value<QObject *>());
        if (!theme)
            continue;
        titles.append(theme->title());
        radii.append(theme->radius());
    }
    QVERIFY(titles.size() >= 2);
    QCOMPARE(root->property("titles").value<QJSValue>().toVariant().toList(), titles);
    QCOMPARE(root->property("radii").value<QJSValue>().toVariant().toList(), radii);
}

void tst_Application::pointerSurvivesGarbageCollection()
{
    QList<QPointer<Theme>> themes;
    for (int i = 0; i < 5; ++i) {
        themes.append(new Theme); // nobody's child
        themes.last()->setTitle(uniqueTitle("Loose"));
        manager().addTheme(themes.last());
    }
    QObject *root = show(R"(
        property int seen: 0
        Repeater {
            model: ThemeManager
            delegate: Item { Component.onCompleted: if (pointer) root.seen += pointer.title.length }
        }
        // What a function returns belongs to the script, unless C++ has said otherwise.
        Component.onCompleted: {
            for (let row = 0; row < ThemeManager.rowCount(); ++row)
                ThemeManager.data(ThemeManager.index(row, 0), 257)
        })");
    QVERIFY(root);
    QVERIFY(root->property("seen").toInt() > 0);
    for (int i = 0; i < 3; ++i) {
        m_engine->collectGarbage();
        deleteDeferred();
    }
    m_view.reset();
    m_engine.reset();
    deleteDeferred();
    for (const QPointer<Theme> &theme : qAsConst(themes))
        QVERIFY(theme);
    for (const QPointer<Theme> &theme : qAsConst(themes))
        delete theme;
}

void tst_Application::loadFromQml()
{
    const QString a = uniqueTitle("A");
    const QString b = uniqueTitle("B");
    write(QStringLiteral("one/a.thm"), themeText(a, 31));
    write(QStringLiteral("two/b.thm"), themeText(b, 32));
    QObject *root = show(R"(
        property int rounding: Theme.radius
        function load(path) { ThemeManager.loadThemes(path) }
        function loadAndSelect(path, title) { ThemeManager.loadThemes(path, title) }
    )");
    QVERIFY(root);
    const int before = root->property("rounding").toInt();
    const int rows = manager().rowCount();
    QSignalSpy current(&manager(), &ThemeManager::currentChanged);
    QVERIFY(QMetaObject::invokeMethod(root, "load",
                                      Q_ARG(QVariant, folder() + QLatin1String("/one"))));
    QCOMPARE(manager().rowCount(), rows + 1);
    QCOMPARE(root->property("rounding").toInt(), before);
    QCOMPARE(current.count(), 0);
    QVERIFY(QMetaObject::invokeMethod(
            root, "loadAndSelect",
            Q_ARG(QVariant, folder() + QLatin1String("/two")), Q_ARG(QVariant, a)));
    QCOMPARE(manager().rowCount(), rows + 2);
    QCOMPARE(root->property("rounding").toInt(), 31);
    QCOMPARE(current.count(), 1);
}

void tst_Application::currentFromQml()
{
    loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property string title: ThemeManager.current.title
        property int row: ThemeManager.currentIndex
        function choose(theme) { ThemeManager.current = theme }
    )");
    QVERIFY(root);
    const auto choose = [&](Theme *theme) {
        return QMetaObject::invokeMethod(root, "choose",
                                         Q_ARG(QVariant, QVariant::fromValue<QObject *>(theme)));
    };
    QCOMPARE(root->property("title").toString(), m_light);
    Theme *dark = manager().themeFromName(m_dark);
    QVERIFY(choose(dark));
    QCOMPARE(manager().current(), dark);
    QCOMPARE(root->property("title").toString(), m_dark);
    QCOMPARE(root->property("row").toInt(), manager().currentIndex());
    QCOMPARE(foreground(root), darkText);
    QVERIFY(choose(nullptr));
    QCOMPARE(manager().current(), dark);
    QCOMPARE(foreground(root), darkText);
}

void tst_Application::currentIndexFromQml()
{
    loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        function choose(row) { ThemeManager.currentIndex = row }
        function chooseBySlot(row) { ThemeManager.setCurrentIndex(row) }
    )");
    QVERIFY(root);
    const int light = manager().currentIndex();
    const int dark = light - 1;
    QCOMPARE(manager().index(dark, 0).data().toString(), m_dark);
    QVERIFY(QMetaObject::invokeMethod(root, "choose", Q_ARG(QVariant, dark)));
    QCOMPARE(foreground(root), darkText);
    QVERIFY(QMetaObject::invokeMethod(root, "chooseBySlot", Q_ARG(QVariant, light)));
    QCOMPARE(foreground(root), lightText);
    for (const int row : { -1, manager().rowCount(), 1000000 }) {
        QVERIFY(QMetaObject::invokeMethod(root, "choose", Q_ARG(QVariant, row)));
        QCOMPARE(manager().currentIndex(), light);
    }
}

void tst_Application::currentChangedFromQml()
{
    loadPair();
    QObject *root = show(R"(
        property var log: []
        Connections {
            target: ThemeManager
            function onCurrentChanged(current) {
                root.log.push(current.title + " " + current.radius + " " + root.Theme.radius)
            }
        })");
    QVERIFY(root);
    switchTo(m_dark);
    switchTo(m_dark);
    switchTo(m_light);
    QCOMPARE(root->property("log").value<QJSValue>().toVariant().toStringList(),
             QStringList({ m_dark + QLatin1String(" 8 8"), m_light + QLatin1String(" 2 2") }));
}

void tst_Application::writeColors()
{
    loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property color other: sibling.Theme.colors.foreground
        property int changes: 0
        Connections { target: root.Theme.colors; function onForegroundChanged() { ++root.changes } }
        function paint(color) { Theme.colors.foreground = color }
        Item { id: sibling })");
    QVERIFY(root);
    const QColor painted(1, 2, 3);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(QMetaObject::invokeMethod(root, "paint", Q_ARG(QVariant, painted)));
        QCOMPARE(foreground(root), painted);
        // The group is the one all items share.
        QCOMPARE(root->property("other").value<QColor>(), painted);
        QCOMPARE(root->property("changes").toInt(), 1);
    }
    // The next switch, here away and back, brings the theme's own color.
    QCOMPARE(manager().current()->colors()->foreground(), lightText);
    switchTo(m_dark);
    switchTo(m_light);
    QCOMPARE(foreground(root), lightText);
}

void tst_Application::writeFonts()
{
    loadPair();
    QObject *root = show(R"(
        property font face: Theme.fonts.h2Font
        function change(size) { Theme.fonts.h2Font = Qt.font({ family: "Sans", pointSize: size,
                                                              italic: true }) })");
    QVERIFY(root);
    QVERIFY(QMetaObject::invokeMethod(root, "change", Q_ARG(QVariant, 27)));
    const QFont font = root->property("face").value<QFont>();
    QCOMPARE(font.pointSizeF(), 27.0);
    QVERIFY(font.italic());
    QCOMPARE(Theme::global()->fonts()->h2Font(), font);
}

void tst_Application::writeRadius()
{
    loadPair();
    QObject *root = show(R"(
        property int rounding: Theme.radius
        property int told: 0
        property int siblingTold: 0
        Theme.onRadiusChanged: ++told
        function set(value) { Theme.radius = value }
        function read() { return sibling.Theme.radius }
        Item { id: sibling; Theme.onRadiusChanged: ++root.siblingTold })");
    QVERIFY(root);
    QVERIFY(QMetaObject::invokeMethod(root, "set", Q_ARG(QVariant, 3)));
    QCOMPARE(root->property("rounding").toInt(), 3);
    QVariant sibling;
    QVERIFY(QMetaObject::invokeMethod(root, "read", Q_RETURN_ARG(QVariant, sibling)));
    QCOMPARE(sibling.toInt(), 3);
    QVERIFY(QMetaObject::invokeMethod(root, "set", Q_ARG(QVariant, 3)));
    QCOMPARE(root->property("told").toInt(), 1);
    QCOMPARE(root->property("siblingTold").toInt(), 0);
}

void tst_Application::writeClassnames()
{
    loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property color siblingFg: sibling.Theme.colors.foreground
        property string names: Theme.classnames
        property var log: []
        Theme.onThemeObjectChanged: log.push("themeObject")
        Theme.onClassnamesChanged: log.push("classnames")
        function set(value) { Theme.classnames = value }
        Item { id: sibling })");
    QVERIFY(root);
    const auto set = [&](const char *names) {
        return QMetaObject::invokeMethod(root, "set", Q_ARG(QVariant, QLatin1String(names)));
    };
    QVERIFY(set("  header "));
    QCOMPARE(root->property("names").toString(), QStringLiteral("header"));
    QCOMPARE(foreground(root), lightHeader);
    QCOMPARE(root->property("siblingFg").value<QColor>(), lightText);
    QVERIFY(set("header"));
    QVERIFY(set(""));
    QCOMPARE(foreground(root), lightText);
    QCOMPARE(root->property("log").value<QJSValue>().toVariant().toStringList(),
             QStringList({ QStringLiteral("themeObject"), QStringLiteral("classnames"),
                           QStringLiteral("themeObject"), QStringLiteral("classnames") }));
}

void tst_Application::writeTitle()
{
    loadPair();
    QObject *root = show(R"(
        property string title: Theme.title
        property string file: Theme.filename
        function set(value) { Theme.title = value; Theme.filename = value })");
    QVERIFY(root);
    QCOMPARE(root->property("title").toString(), m_light);
    QCOMPARE(root->property("file").toString(), QString());
    QVERIFY(QMetaObject::invokeMethod(root, "set", Q_ARG(QVariant, QStringLiteral("mine"))));
    QCOMPARE(root->property("title").toString(), QStringLiteral("mine"));
    QCOMPARE(root->property("file").toString(), QStringLiteral("mine"));
    // They are the item's own.
    QCOMPARE(Theme::global()->title(), m_light);
    QCOMPARE(Theme::global()->filename(), QString());
}

void tst_Application::readOnlyMembers_data()
{
    QTest::addColumn<QByteArray>("statement");

    QTest::newRow("colors") << QByteArray("Theme.colors = null");
    QTest::newRow("fonts") << QByteArray("Theme.fonts = null");
    QTest::newRow("font factor") << QByteArray("Theme.fonts.fontFactor = 1");
}

void tst_Application::readOnlyMembers()
{
    QFETCH(const QByteArray, statement);

    loadPair();
    QObject *root = show("property string error: \"\"\n"
                         "function run() { try { "
                         + statement + " } catch (e) { error = e.message } }");
    QVERIFY(root);
    QVERIFY(QMetaObject::invokeMethod(root, "run"));
    const QString error = root->property("error").toString();
    QVERIFY2(error.contains(QLatin1String("read-only property")), qPrintable(error));
    QCOMPARE(Theme::global()->fonts()->fontFactor(), 0.75);
}

void tst_Application::callSlots()
{
    loadPair();
    QObject *root = show(R"(
        Theme.classnames: "a b"
        property bool has: Theme.hasClassname("b")
        property bool hasNot: Theme.hasClassname("B")
        property color onWhite: Theme.complementaryColor("white")
        property color onBlack: Theme.complementaryColor("black")
        property string noStyle: Theme.getStyle("Nothing")
        property string noVariant: Theme.getStyle("Nothing", "a b"))");
    QVERIFY(root);
    QCOMPARE(root->property("has").toBool(), true);
    QCOMPARE(root->property("hasNot").toBool(), false);
    QCOMPARE(root->property("onWhite").value<QColor>(), QColor(Qt::black));
    QCOMPARE(root->property("onBlack").value<QColor>(), QColor(Qt::white));
    QCOMPARE(root->property("noStyle").toString(), QString());
    QCOMPARE(root->property("noVariant").toString(), QString());
}

void tst_Application::stylesThroughALoader()
{
    const auto style = [&](const char *name) {
        write(QLatin1String("themes/styles/") + QLatin1String(name) + QLatin1String(".qml"),
              QByteArray(
                      "import QtQuick 2.15\nimport Tavolins 1.0\nItem { property string kind: \"")
                      + name + "\"; property color fg: Theme.colors.foreground }");
    };
    style("Button");
    style("Button_primary");
    style("Card with space");
    loadPair();
    QObject *root = show(R"(
        property string names: ""
        property string wanted: "Button"
        Theme.classnames: names
        Loader { id: loader; source: Theme.getStyle(root.wanted, root.names) }
        property string kind: loader.item ? loader.item.kind : ""
        property color fg: loader.item ? loader.item.fg : "transparent")");
    QVERIFY(root);
    QCOMPARE(root->property("kind").toString(), QStringLiteral("Button"));
    QCOMPARE(foreground(root), lightText);
    root->setProperty("names", QStringLiteral("big primary"));
    QCOMPARE(root->property("kind").toString(), QStringLiteral("Button_primary"));
    root->setProperty("names", QStringLiteral("big"));
    QCOMPARE(root->property("kind").toString(), QStringLiteral("Button"));
    root->setProperty("wanted", QStringLiteral("Card with space"));
    QCOMPARE(root->property("kind").toString(), QStringLiteral("Card with space"));
    root->setProperty("wanted", QStringLiteral("Nothing"));
    QCOMPARE(root->property("kind").toString(), QString());
    switchTo(m_dark);
    root->setProperty("wanted", QStringLiteral("Button"));
    QCOMPARE(foreground(root), darkText);
}

void tst_Application::styleFollowsTheTheme()
{
    // Each theme has a folder of its own; a binding that reads a changing property as well asks
    // for the style anew.
    const QString one = uniqueTitle("One");
    const QString two = uniqueTitle("Two");
    for (const QString &title : { one, two }) {
        write(title + QLatin1String("/t.thm"), themeText(title, title == one ? 1 : 2));
        write(title + QLatin1String("/styles/Panel.qml"),
              "import QtQml 2.15\nQtObject { property string kind: \"" + title.toUtf8() + "\" }");
        manager().loadThemes(folder() + QLatin1Char('/') + title);
    }
    switchTo(one);
    QObject *root = show(R"(
        property string style: { Theme.colors; return Theme.getStyle("Panel") })");
    QVERIFY(root);
    const auto url = [&](const QString &title) {
        return QUrl::fromLocalFile(folder() + QLatin1Char('/') + title
                                   + QLatin1String("/styles/Panel.qml"))
                .toString();
    };
    QCOMPARE(root->property("style").toString(), url(one));
    switchTo(two);
    QCOMPARE(root->property("style").toString(), url(two));
}

void tst_Application::reloadInPlace()
{
    loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property color headerFg: header.Theme.colors.foreground
        property int rounding: Theme.radius
        property string title: ThemeManager.current.title
        Item { id: header; Theme.classnames: "header" })");
    QVERIFY(root);
    for (int round = 1; round <= 3; ++round) {
        const QColor text(round, 0, 0);
        const QColor header(0, round, 0);
        const QString title = m_light + QString::number(round);
        write(QStringLiteral("themes/light.thm"), pairText(title, 50 + round, text, header, 20));
        QTRY_COMPARE(root->property("rounding").toInt(), 50 + round);
        QCOMPARE(foreground(root), text);
        QCOMPARE(root->property("headerFg").value<QColor>(), header);
        QCOMPARE(root->property("title").toString(), title);
    }
}

void tst_Application::reloadByRename()
{
    const QString path = loadPair();
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property int rounding: Theme.radius)");
    QVERIFY(root);
    const auto replace = [&](int radius) {
        QSaveFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(pairText(m_light, radius, QColor(0, 0, radius), lightHeader, 20));
        QVERIFY(file.commit());
    };
    replace(61);
    QTest::qWait(200);
    // One reading at most; then the watch is gone.
    const int seen = root->property("rounding").toInt();
    QVERIFY(seen == 61 || seen == 2);
    QCOMPARE(foreground(root), seen == 61 ? QColor(0, 0, 61) : lightText);
    replace(62);
    QTest::qWait(200);
    QCOMPARE(root->property("rounding").toInt(), seen);
    // Away and back watches again.
    switchTo(m_dark);
    switchTo(m_light);
    QCOMPARE(root->property("rounding").toInt(), seen);
    write(QStringLiteral("themes/light.thm"),
          pairText(m_light, 63, QColor(0, 0, 63), lightHeader, 20));
    QTRY_COMPARE(root->property("rounding").toInt(), 63);
    QCOMPARE(foreground(root), QColor(0, 0, 63));
}

void tst_Application::extendsLaterFile()
{
    const QByteArray parent = uniqueTitle("Parent").toUtf8();
    const QByteArray child = uniqueTitle("Child").toUtf8();
    write(QStringLiteral("t/a.thm"),
          "{\"title\": \"" + child + "\", \"extends\": \"" + parent + "\"}");
    write(QStringLiteral("t/b.thm"),
          coloredThemeText(QString::fromUtf8(parent), 71, "#070707",
                           "\"mine\": {\"colors\": {\"foreground\": \"#ff0000\"}}"));
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property color mine: item.Theme.colors.foreground
        property int rounding: Theme.radius
        Item { id: item; Theme.classnames: "mine" }
        function load(path, title) { ThemeManager.loadThemes(path, title) })");
    QVERIFY(root);
    const int rows = manager().rowCount();
    QVERIFY(QMetaObject::invokeMethod(root, "load",
                                      Q_ARG(QVariant, folder() + QLatin1String("/t")),
                                                   Q_ARG(QVariant, QString::fromUtf8(child))));
    QCOMPARE(manager().current()->title(), QString::fromUtf8(child));
    QCOMPARE(manager().currentIndex(), rows + 1); // behind its parent
    QCOMPARE(root->property("rounding").toInt(), 71);
    QCOMPARE(foreground(root), QColor(7, 7, 7));
    QCOMPARE(root->property("mine").value<QColor>(), QColor(255, 0, 0));
}

void tst_Application::resourceThemes()
{
    QObject *root = show(R"(
        property color fg: Theme.colors.foreground
        property int rounding: Theme.radius
        property string file: ThemeManager.current.filename
        Component.onCompleted: ThemeManager.loadThemes(":/themes", "resource dark"))");
    QVERIFY(root);
    QCOMPARE(root->property("file").toString(), QStringLiteral(":/themes/dark.thm"));
    QCOMPARE(root->property("rounding").toInt(), 5);
    QCOMPARE(foreground(root), QColor(0xee, 0xee, 0xee));
    // Inherited from the file that comes later: its class scopes.
    const auto classed = create(m_engine.get(), R"(
        import QtQuick 2.15
        import Tavolins 1.0
        Item { property color fg: Theme.colors.foreground; Theme.classnames: "header" })");
    QVERIFY(classed);
    QCOMPARE(foreground(classed.get()), QColor(0, 0, 0xcc));
    switchTo(QStringLiteral("resource light"));
    QCOMPARE(root->property("rounding").toInt(), 2);
}

void tst_Application::resourceStyle()
{
    manager().loadThemes(QStringLiteral(":/themes"), QStringLiteral("resource light"));
    QObject *root = show(R"(
        property string url: Theme.getStyle("Badge")
        Loader { id: loader; source: root.url }
        property int status: loader.status
        property string text: loader.item ? loader.item.text : "")");
    QVERIFY(root);
    QCOMPARE(root->property("url").toString(), QStringLiteral("qrc://:/themes/styles/Badge.qml"));
    QCOMPARE(root->property("text").toString(), QStringLiteral("badge from the resources"));
}

TAVOLINS_TEST_MAIN(tst_Application)
#include "tst_application.moc"
