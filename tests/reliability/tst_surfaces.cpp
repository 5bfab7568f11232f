#include "manager/thememanager.h"
#include "reliability/themelook.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <functional>
#include <memory>
#include <utility>

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

/// What QML binds to an attached theme in the body of an item whose context outlives it.
struct Bound
{
    const char *name;
    const char *code;
};

const Bound boundParts[] = {
    { "classnames", "Theme.classnames: clock.tell(clock.tick % 2 ? 'warning' : 'quiet')" },
    { "title", "Theme.title: clock.tell('title ' + clock.tick)" },
    { "filename", "Theme.filename: clock.tell('file ' + clock.tick)" },
    { "radius", "Theme.radius: clock.tell(clock.tick)" },
    { "a color of its class",
      "Theme.classnames: 'warning'; Component.onCompleted: Theme.colors.selection ="
      " Qt.binding(() => clock.tell(clock.tick % 2 ? 'red' : 'blue'))" },
    { "a font of its class",
      "Theme.classnames: 'warning'; Component.onCompleted: Theme.fonts.h1Font ="
      " Qt.binding(() => clock.tell(Qt.font({ pointSize: 20 + clock.tick })))" },
    { "handlers of every signal",
      "Theme.onThemeObjectChanged: clock.tell(1); Theme.onRadiusChanged: clock.tell(1);"
      " Theme.onNeedUpdate: clock.tell(1); Theme.onClassnamesChanged: clock.tell(1);"
      " Theme.onTitleChanged: clock.tell(1)" },
};

enum Death {
    DeletedNatively,
    DeletedLater,
    DeletedWithParent,
    RemovedByContainer,
    TakenAndCollected,
    DestroyedByQml,
    DeletedAfterDisconnect,
    DeletedAfterItsChildren,
    DeletedWithWindow,
    DeathCount
};

const char *const deathNames[DeathCount] = {
    "deleted natively",
    "deleted later",
    "deleted with its parent",
    "removed by its container",
    "taken from its container and collected",
    "destroyed by QML",
    "deleted after disconnect()",
    "deleted after all its children",
    "deleted with its window",
};

/// When something changes that the binding depends on, or the theme is switched.
enum Moment {
    AtOnce,
    WhenDestroyedIsEmitted,
    WhileTheParentIsDestroyed,
    NextTurn,
    InHandlerOfItsUpdate,
    InHandlerOfItsClassChange,
    InNestedLoopOfItsUpdate,
    MomentCount
};

const char *const momentNames[MomentCount] = {
    "at once",
    "when destroyed() is emitted",
    "while what was in it is destroyed",
    "after a turn of the event loop",
    "in a handler of its update",
    "in a handler of its new class",
    "in an event loop in a QML handler of its update",
};

bool isInBar(Death death)
{
    return death == RemovedByContainer || death == TakenAndCollected;
}

const char *const outlivedText = R"(
    Item {
        property alias inBar: inBar
        property alias alone: alone
        property alias bar: bar
        property alias wrapper: wrapper
        property alias window: window
        function remove() { bar.removeItem(inBar) }
        function take() { bar.takeItem(0) }
        function destroyIt() { alone.destroy() }
        Window { id: window }
        property Theme theme
        Connections {
            target: theme
            function onFilenameChanged() { clock.act() }
        }
        Item {
            id: wrapper
            TabBar {
                id: bar
                TabButton { id: inBar; %IN BAR% }
                TabButton {}
            }
            Item { id: alone; %ALONE% }
        }
    })";

} // namespace

/// What the bindings of an item depend on, and how often they were evaluated.
class Clock : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int tick MEMBER tick NOTIFY ticked)

public:
    Q_INVOKABLE QVariant tell(const QVariant &value)
    {
        ++evaluations;
        return value;
    }
    Q_INVOKABLE void act()
    {
        if (action)
            std::exchange(action, nullptr)();
    }

    int tick = 0;
    int evaluations = 0;
    std::function<void()> action;

Q_SIGNALS:
    void ticked();
};

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
    void bindingsThatOutliveTheItem_data();
    void bindingsThatOutliveTheItem();
    void listenersAfterDisconnect();
    void itemDiesInHandlerOfItsGroup_data();
    void itemDiesInHandlerOfItsGroup();

private:
    void endItem(Death death, const QPointer<QObject> &item, QObject *root);
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
    write(QStringLiteral("day.thm"), themeLookText(day, daySeed));
    write(QStringLiteral("night.thm"), themeLookText(night, nightSeed));
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
    file.write(themeLookText(current->title(), seed));
    file.close();
    QTRY_VERIFY(ThemeLook::ofTheme(Theme::global()) == ThemeLook::ofSeed(seed));
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
            return !probe
                    || ThemeLook::ofProbe(probe) == ThemeLook::ofSeed(seed, theme->classnames());
        };
        QTRY_VERIFY2(isRight(), qPrintable(probe ? ThemeLook::ofProbe(probe).text() : QString()));
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
            if (!(ThemeLook::ofTheme(theme) == ThemeLook::ofSeed(seed, theme->classnames())))
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

void tst_Surfaces::bindingsThatOutliveTheItem_data()
{
    QTest::addColumn<int>("part");
    QTest::addColumn<int>("death");
    QTest::addColumn<int>("moment");
    int part = 0;
    for (const Bound &bound : boundParts) {
        for (int death = 0; death < DeathCount; ++death) {
            for (int moment = 0; moment < MomentCount; ++moment) {
                QTest::addRow("%s, %s, %s", bound.name, deathNames[death], momentNames[moment])
                        << part << death << moment;
            }
        }
        ++part;
    }
}

void tst_Surfaces::endItem(Death death, const QPointer<QObject> &item, QObject *root)
{
    switch (death) {
    case DeletedNatively:
        delete item;
        break;
    case DeletedLater:
        item->deleteLater();
        break;
    case DeletedWithParent:
        delete root->property("wrapper").value<QObject *>();
        break;
    case RemovedByContainer:
        QMetaObject::invokeMethod(root, "remove");
        break;
    case TakenAndCollected:
        QMetaObject::invokeMethod(root, "take");
        QQmlEngine::setObjectOwnership(item, QQmlEngine::JavaScriptOwnership);
        item->setParent(nullptr);
        qobject_cast<QQuickItem *>(item)->setParentItem(nullptr);
        qmlEngine(root)->collectGarbage();
        break;
    case DestroyedByQml:
        QQmlEngine::setObjectOwnership(item, QQmlEngine::JavaScriptOwnership);
        QMetaObject::invokeMethod(root, "destroyIt");
        break;
    case DeletedAfterDisconnect:
        item->disconnect();
        delete item;
        break;
    case DeletedAfterItsChildren: {
        // The attached theme goes on while the item lives.
        const QObjectList children = item->children();
        qDeleteAll(children);
        QVERIFY(Theme::attachedTheme(item));
        delete item;
        break;
    }
    case DeletedWithWindow:
        item->setParent(root->property("window").value<QObject *>());
        delete root->property("window").value<QObject *>();
        break;
    case DeathCount:
        break;
    }
    QCoreApplication::sendPostedEvents(item, QEvent::DeferredDelete);
    QVERIFY(!item);
}

/// A binding or handler whose context outlives the item is not evaluated in the name of an item
/// that is gone.
void tst_Surfaces::bindingsThatOutliveTheItem()
{
    QFETCH(int, part);
    QFETCH(int, death);
    QFETCH(int, moment);
    loadThemes();
    ThemeManager *manager = ThemeManager::getInstance();
    Clock clock;
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    engine.rootContext()->setContextProperty(QStringLiteral("clock"), &clock);
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nimport QtQuick.Window 2.15\n"
                      "import QtQuick.Controls 2.15\nimport " TAVOLINS_QML_URI " 1.0\n"
                              + QByteArray(outlivedText)
                                        .replace(isInBar(Death(death)) ? "%IN BAR%" : "%ALONE%",
                                                 boundParts[part].code)
                                        .replace("%IN BAR%", "")
                                        .replace("%ALONE%", ""),
                      QUrl());
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
    QObject *item = root->property(isInBar(Death(death)) ? "inBar" : "alone").value<QObject *>();
    Theme *theme = Theme::attachedTheme(item);
    QVERIFY(theme);
    root->setProperty("theme", QVariant::fromValue(theme));

    int evaluationsAfterDeath = -1;
    const auto tick = [&] {
        ++clock.tick;
        Q_EMIT clock.ticked();
        manager->setCurrent(manager->current() == m_day ? m_night : m_day);
    };
    const auto endAndTick = [&] {
        endItem(Death(death), item, root.get());
        evaluationsAfterDeath = clock.evaluations;
        tick();
    };
    switch (moment) {
    case AtOnce:
        endAndTick();
        break;
    case WhenDestroyedIsEmitted: {
        // The item is still there as far as QML is concerned, so its bindings may be evaluated.
        QObject *witness = new QObject(item);
        connect(witness, &QObject::destroyed, &clock, tick);
        if (death != DeletedAfterDisconnect)
            connect(item, &QObject::destroyed, &clock, tick);
        endAndTick();
        break;
    }
    case WhileTheParentIsDestroyed: {
        QObject *last = new QObject(item);
        connect(last, &QObject::destroyed, &clock, tick);
        endAndTick();
        break;
    }
    case NextTurn:
        endItem(Death(death), item, root.get());
        deleteDeferred();
        evaluationsAfterDeath = clock.evaluations;
        tick();
        break;
    case InHandlerOfItsUpdate:
        clock.action = endAndTick;
        connect(theme, &Theme::needUpdate, &clock, &Clock::act);
        tick();
        break;
    case InHandlerOfItsClassChange:
        clock.action = endAndTick;
        connect(theme, &Theme::themeObjectChanged, &clock, &Clock::act);
        theme->setClassnames(QStringLiteral("other"));
        break;
    case InNestedLoopOfItsUpdate:
        clock.action = [&] {
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                endAndTick();
                loop.quit();
            });
            loop.exec();
        };
        theme->setFilename(QStringLiteral("another"));
        break;
    }
    QVERIFY(evaluationsAfterDeath >= 0);
    deleteDeferred();
    tick();
    QCOMPARE(clock.evaluations, evaluationsAfterDeath);
    QCOMPARE(sharingThemes(), 1);
    QVERIFY(ThemeLook::ofTheme(Theme::global())
            == ThemeLook::ofSeed(manager->current() == m_day ? daySeed : nightSeed));
}

void tst_Surfaces::listenersAfterDisconnect()
{
    loadThemes();
    for (int i = 0; i < 1000; ++i) {
        QObject object;
        QVERIFY(Theme::qmlAttachedProperties(&object));
        object.disconnect();
    }
    QCOMPARE(sharingThemes(), 1);
}

void tst_Surfaces::itemDiesInHandlerOfItsGroup_data()
{
    QTest::addColumn<QByteArray>("classname");
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<QByteArray>("handler");
    QTest::addColumn<QByteArray>("change");

    const struct
    {
        const char *what;
        const char *group;
        const char *handler;
        const char *change;
    } changes[] = {
        { "a color is written", "colors", "onSelectionChanged", "selection = 'red'" },
        { "a font is written", "fonts", "onH1FontChanged", "h1Font = Qt.font({ pointSize: 33 })" },
        { "a part of a font is written", "fonts", "onH2FontChanged", "h2Font.pointSize = 34" },
    };
    for (const auto &change : changes) {
        for (const char *classname : { "", "warning" }) {
            QTest::addRow("%s, %s", change.what, *classname ? "with a class" : "without a class")
                    << QByteArray(classname) << QByteArray(change.group)
                    << QByteArray(change.handler) << QByteArray(change.change);
        }
    }
}

/// The group that an item alone has stays until its signal has reached everybody, also when a
/// handler shows a dialog meanwhile in whose event loop the item dies.
void tst_Surfaces::itemDiesInHandlerOfItsGroup()
{
    QFETCH(const QByteArray, classname);
    QFETCH(const QByteArray, group);
    QFETCH(const QByteArray, handler);
    QFETCH(const QByteArray, change);
    loadThemes();
    Clock clock;
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    engine.rootContext()->setContextProperty(QStringLiteral("clock"), &clock);
    QQmlComponent component(&engine);
    component.setData("import QtQuick 2.15\nimport " TAVOLINS_QML_URI " 1.0\n"
                      "Item { property alias item: one; function change() { one.group."
                              + change
                              + " } property QtObject watched: null; Component.onCompleted: "
                                "watched = one.group;"
                                " Connections { target: watched; function "
                              + handler + "() { clock.act() } } Item { id: one; Theme.classnames: '"
                              + classname + "'; property QtObject group: Theme." + group + " } }",
                      QUrl());
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
    const QPointer<QObject> item = root->property("item").value<QObject *>();
    const QPointer<QObject> values = item->property("group").value<QObject *>();
    clock.action = [&] {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            delete item;
            // Reaches what is deleted with a delay, in this loop and further in.
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
        deleteDeferred();
        QVERIFY(values);
    };
    QVERIFY(QMetaObject::invokeMethod(root.get(), "change"));
    QVERIFY(!clock.action);
    QVERIFY(!item);
    deleteDeferred();
    QCOMPARE(bool(values), classname.isEmpty());
    QCOMPARE(sharingThemes(), 1);
}

TAVOLINS_TEST_MAIN(tst_Surfaces)
#include "tst_surfaces.moc"
