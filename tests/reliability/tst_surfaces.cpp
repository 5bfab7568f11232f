#include "manager/thememanager.h"
#include "reliability/look.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <memory>

namespace {

const int daySeed = 1;
const int nightSeed = 2;
const int editedSeed = 3;

struct Surface
{
    const char *name;
    // QML; %PROBE% in an object makes it show every value of the theme. The function step() is
    // called before each look at it.
    const char *code;
};

const Surface surfaces[] = {
    { "Item", "Item { %PROBE% }" },
    { "QtObject", "QtObject { %PROBE% }" },
    { "Text", "Text { %PROBE% text: 'text'; color: shownForeground; font: shownMainFont }" },
    { "Popup",
      "Item { function step() { if (p.visible) p.close(); else p.open() }"
      " Popup { id: p; %PROBE% Item { %PROBE% } } }" },
    { "Menu",
      "Item { function step() { if (m.visible) m.close(); else m.open() }"
      " Menu { id: m; %PROBE% MenuItem { %PROBE% } Menu { %PROBE% } } }" },
    { "ToolTip",
      "Item { function step() { t.visible = !t.visible } ToolTip { id: t; text: 'text'; %PROBE% } "
      "}" },
    { "Drawer",
      "Item { function step() { if (d.visible) d.close(); else d.open() }"
      " Drawer { id: d; %PROBE% Item { %PROBE% } } }" },
    { "ApplicationWindow",
      "ApplicationWindow { visible: true; width: 100; height: 100; %PROBE%"
      " header: Item { %PROBE% } footer: Label { %PROBE% } Item { %PROBE% } }" },
    { "child Window",
      "Item { function step() { w.visible = !w.visible }"
      " Window { id: w; width: 100; height: 100; %PROBE% Item { %PROBE% } } }" },
    { "Loader, toggled",
      "Item { function step() { l.active = false; l.active = true }"
      " Loader { id: l; sourceComponent: Component { Item { %PROBE% } } } }" },
    { "Loader, asynchronous",
      "Item { function step() { l.active = false; l.active = true }"
      " Loader { id: l; asynchronous: true; sourceComponent: Component { Item { %PROBE% } } } }" },
    { "Repeater",
      "Item { property int n: 3; function step() { n += 2 }"
      " Repeater { model: n; Item { %PROBE% } } }" },
    { "ListView",
      "ListView { id: v; property int at: 0; width: 100; height: 100; model: 200"
      " ; function step() { at += 31; positionViewAtIndex(at, ListView.Beginning) }"
      " delegate: Item { width: 20; height: 20; %PROBE% } }" },
    { "ListView, reuseItems",
      "ListView { id: v; property int at: 0; width: 100; height: 100; model: 200; reuseItems: true"
      " ; function step() { at += 31; positionViewAtIndex(at, ListView.Beginning) }"
      " delegate: Item { width: 20; height: 20; %PROBE% } }" },
    { "GridView",
      "GridView { property int at: 0; width: 100; height: 100; model: 500"
      " ; cellWidth: 30; cellHeight: 30"
      " ; function step() { at += 71; positionViewAtIndex(at, GridView.Beginning) }"
      " delegate: Item { width: 20; height: 20; %PROBE% } }" },
    { "TableView, reuseItems",
      "TableView { width: 100; height: 100; model: 100; reuseItems: true"
      " ; function step() { contentY += 70 }"
      " delegate: Item { implicitWidth: 20; implicitHeight: 20; %PROBE% } }" },
    { "Instantiator",
      "Item { function step() { i.model += 1 }"
      " Instantiator { id: i; model: 3; delegate: QtObject { %PROBE% } } }" },
    { "StackView",
      "StackView { id: s; width: 100; height: 100; initialItem: Item { %PROBE% }"
      " Component { id: page; Item { %PROBE% } }"
      " function step() { if (depth > 1) pop(StackView.Immediate);"
      " else push(page, StackView.Immediate) } }" },
    { "Behavior on a color",
      "Rectangle { %PROBE% Behavior on shownForeground { ColorAnimation { duration: 30 } }"
      " color: shownBackground; Behavior on color { ColorAnimation { duration: 30 } } }" },
    { "states and transitions",
      "Item { id: root; %PROBE% function step() { state = state ? '' : 'on' }"
      " states: State { name: 'on'; PropertyChanges { target: root"
      " ; shownForeground: Theme.colors.foreground; shownH1Font: Theme.fonts.h1Font } }"
      " transitions: Transition { ColorAnimation { duration: 30 } } }" },
    { "Connections and handlers",
      "Item { id: root; %PROBE% function copy() { shownForeground = Theme.colors.foreground;"
      " shownRadius = Theme.radius }"
      " function step() {} Theme.onThemeObjectChanged: copy(); Theme.onRadiusChanged: copy()"
      " ; property QtObject c: Connections { target: Theme.colors"
      " ; function onForegroundChanged() { root.copy() } } }" },
    { "reparented items",
      "Item { function step() { p.parent = p.parent === a ? b : a }"
      " Item { id: a; Item { id: p; %PROBE% Item { %PROBE% } } }"
      " Window { visible: true; Item { id: b } } }" },
    { "destroyed by a change handler",
      "Item { id: root; %PROBE% property Component c: Component { Item { %PROBE% } }"
      " property var made: null;"
      " function renew() { if (made) made.destroy(); made = c.createObject(root) }"
      "\nComponent.onCompleted: renew()\nTheme.onNeedUpdate: renew() }" },
};

} // namespace

/// Knows the objects that show the theme, in order of their creation.
class Probes : public QObject
{
    Q_OBJECT

public:
    QVector<QPointer<QObject>> live() const
    {
        QVector<QPointer<QObject>> objects;
        for (const QPointer<QObject> &probe : m_probes) {
            if (probe)
                objects.append(probe);
        }
        return objects;
    }

    Q_INVOKABLE bool enter(QObject *probe)
    {
        m_probes.append(probe);
        return true;
    }

private:
    QVector<QPointer<QObject>> m_probes;
};

/// All kinds of QML objects: the right values at first, after a switch, after an edit of the theme
/// file, after a change of their class, and an end without a message.
class tst_Surfaces : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void surface_data();
    void surface();
    void nativeObjects_data();
    void nativeObjects();
    void twoWindowsAndTwoEngines();

private:
    void loadThemes();
    void editCurrentTheme(int seed);
    static std::unique_ptr<QQmlEngine> newEngine(Probes *probes);
    static QObject *create(QQmlEngine *engine, const char *code, QQuickWindow *window);
    void check(const Probes &probes, int seed);
    static int sharingThemes();

    int m_row = 0;
    QPointer<Theme> m_day;
    QPointer<Theme> m_night;
};

void tst_Surfaces::loadThemes()
{
    ++m_row;
    const QString day = QStringLiteral("Day %1").arg(m_row);
    const QString night = QStringLiteral("Night %1").arg(m_row);
    write(QStringLiteral("day.thm"), themeText(day, daySeed));
    write(QStringLiteral("night.thm"), themeText(night, nightSeed));
    ThemeManager *manager = ThemeManager::getInstance();
    manager->loadThemes(folder(), day);
    m_day = manager->current();
    m_night = manager->themeFromName(night);
    QCOMPARE(m_day->title(), day);
    QVERIFY(m_night);
}

/// Saves in place and waits until the manager has noticed.
void tst_Surfaces::editCurrentTheme(int seed)
{
    Theme *current = ThemeManager::getInstance()->current();
    QFile file(current->filename());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(themeText(current->title(), seed));
    file.close();
    QTRY_VERIFY(Look::ofTheme(Theme::global()) == Look::ofSeed(seed));
}

std::unique_ptr<QQmlEngine> tst_Surfaces::newEngine(Probes *probes)
{
    auto engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    engine->rootContext()->setContextProperty(QStringLiteral("probes"), probes);
    return engine;
}

/// The object of \a code, shown in \a window if it is an item.
QObject *tst_Surfaces::create(QQmlEngine *engine, const char *code, QQuickWindow *window)
{
    const QByteArray probe = probeText() + "property bool entered: probes.enter(this)\n";
    QQmlComponent component(engine);
    component.setData("import QtQml 2.15\nimport QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                      "import QtQuick.Controls 2.15\nimport " TAVOLINS_QML_URI
                      " 1.0\n" + QByteArray(code).replace("%PROBE%", "\n" + probe),
                      QUrl());
    QObject *object = component.create();
    if (!object)
        qWarning("%s", qPrintable(component.errorString()));
    if (auto *item = qobject_cast<QQuickItem *>(object))
        item->setParentItem(window->contentItem());
    return object;
}

void tst_Surfaces::check(const Probes &probes, int seed)
{
    QTRY_VERIFY(!probes.live().isEmpty());
    const auto live = probes.live();
    for (const QPointer<QObject> &probe : live) {
        // Asynchronous ends of what was before, such as a destroy(), take their time.
        const auto isRight = [&] {
            const Theme *theme = Theme::attachedTheme(probe);
            return !probe || Look::ofProbe(probe) == Look::ofSeed(seed, theme->classnames());
        };
        QTRY_VERIFY2(isRight(), qPrintable(probe ? Look::ofProbe(probe).text() : QString()));
    }
}

/// How many themes share the global theme's data, itself included.
int tst_Surfaces::sharingThemes()
{
    struct Access : public QObject
    {
        using QObject::receivers;
    };
    int (QObject::*const count)(const char *) const = &Access::receivers;
    return (Theme::global()->colors()->parent()->*count)(SIGNAL(updateTheme()));
}

void tst_Surfaces::surface_data()
{
    QTest::addColumn<int>("index");
    int index = 0;
    for (const Surface &surface : surfaces)
        QTest::newRow(surface.name) << index++;
}

void tst_Surfaces::surface()
{
    QFETCH(int, index);
    loadThemes();
    ThemeManager *manager = ThemeManager::getInstance();
    Probes probes;
    const std::unique_ptr<QQmlEngine> engine = newEngine(&probes);
    QQuickWindow window;
    window.resize(200, 200);
    window.show();
    std::unique_ptr<QObject> object(create(engine.get(), surfaces[index].code, &window));
    QVERIFY(object);
    const auto step = [&] {
        if (object->metaObject()->indexOfMethod("step()") >= 0)
            QMetaObject::invokeMethod(object.get(), "step");
    };

    step();
    check(probes, daySeed);
    manager->setCurrent(m_night);
    check(probes, nightSeed);
    step();
    check(probes, nightSeed);
    editCurrentTheme(editedSeed);
    check(probes, editedSeed);
    step();
    check(probes, editedSeed);
    const auto live = probes.live();
    bool isWarning = false;
    for (QObject *probe : live) {
        isWarning = !isWarning;
        Theme::attachedTheme(probe)->setClassnames(isWarning ? QStringLiteral("warning")
                                                             : QStringLiteral("quiet"));
    }
    check(probes, editedSeed);
    step();
    manager->setCurrent(m_day);
    check(probes, daySeed);

    object.reset();
    deleteDeferred();
    QVERIFY(probes.live().isEmpty());
    QCOMPARE(sharingThemes(), 1);
}

void tst_Surfaces::nativeObjects_data()
{
    QTest::addColumn<bool>("hasEngine");
    QTest::newRow("with an engine") << true;
    QTest::newRow("without an engine") << false;
}

/// Objects that native code creates and attaches a theme to.
void tst_Surfaces::nativeObjects()
{
    QFETCH(bool, hasEngine);
    loadThemes();
    ThemeManager *manager = ThemeManager::getInstance();
    Probes probes;
    std::unique_ptr<QQmlEngine> engine;
    if (hasEngine)
        engine = newEngine(&probes);
    auto item = std::make_unique<QQuickItem>();
    auto object = std::make_unique<QObject>();
    QVector<Theme *> themes;
    for (QObject *owner : { static_cast<QObject *>(item.get()), object.get() }) {
        if (engine)
            QQmlEngine::setContextForObject(owner, engine->rootContext());
        auto *theme = qobject_cast<Theme *>(qmlAttachedPropertiesObject<Theme>(owner));
        QVERIFY(theme);
        QCOMPARE(Theme::attachedTheme(owner), theme);
        themes.append(theme);
    }
    const auto show = [&](int seed) {
        for (const Theme *theme : qAsConst(themes)) {
            if (!(Look::ofTheme(theme) == Look::ofSeed(seed, theme->classnames())))
                return false;
        }
        return true;
    };
    QVERIFY(show(daySeed));
    manager->setCurrent(m_night);
    QVERIFY(show(nightSeed));
    editCurrentTheme(editedSeed);
    QVERIFY(show(editedSeed));
    themes.first()->setClassnames(QStringLiteral("warning"));
    QVERIFY(show(editedSeed));
    manager->setCurrent(m_day);
    QVERIFY(show(daySeed));
    // The engine may go first.
    engine.reset();
    manager->setCurrent(m_night);
    QVERIFY(show(editedSeed));

    item.reset();
    object.reset();
    deleteDeferred();
    QCOMPARE(sharingThemes(), 1);
}

void tst_Surfaces::twoWindowsAndTwoEngines()
{
    loadThemes();
    ThemeManager *manager = ThemeManager::getInstance();
    const char *const code = "Item { %PROBE% Repeater { model: 5; Item { %PROBE% } }"
                             " Popup { visible: true; %PROBE% } }";
    Probes probes[2];
    std::unique_ptr<QQmlEngine> engines[2];
    // The second engine has a window of its own and an item in the first one's.
    QQuickWindow windows[2];
    std::unique_ptr<QObject> objects[3];
    for (int i : { 0, 1 }) {
        engines[i] = newEngine(&probes[i]);
        windows[i].show();
        objects[i].reset(create(engines[i].get(), code, &windows[i]));
        QVERIFY(objects[i]);
    }
    objects[2].reset(create(engines[1].get(), code, &windows[0]));
    QCOMPARE(probes[0].live().size(), 7);
    QCOMPARE(probes[1].live().size(), 14);
    const auto checkBoth = [&](int seed) {
        check(probes[0], seed);
        check(probes[1], seed);
    };
    checkBoth(daySeed);
    manager->setCurrent(m_night);
    checkBoth(nightSeed);
    editCurrentTheme(editedSeed);
    checkBoth(editedSeed);
    Theme::attachedTheme(objects[0].get())->setClassnames(QStringLiteral("warning"));
    Theme::attachedTheme(objects[1].get())->setClassnames(QStringLiteral("quiet"));
    checkBoth(editedSeed);

    // The catalogue belongs to none of the engines.
    objects[0].reset();
    engines[0].reset();
    deleteDeferred();
    QVERIFY(probes[0].live().isEmpty());
    manager->setCurrent(m_day);
    check(probes[1], daySeed);
    QCOMPARE(sharingThemes(), 15);
    objects[1].reset();
    objects[2].reset();
    engines[1].reset();
    deleteDeferred();
    QCOMPARE(sharingThemes(), 1);
}

TAVOLINS_TEST_MAIN(tst_Surfaces)
#include "tst_surfaces.moc"
