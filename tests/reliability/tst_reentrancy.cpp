#include "manager/thememanager.h"
#include "reliability/themelook.h"
#include "support/objectcount.h"
#include "support/receivers.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
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
const int thirdSeed = 3;
const int folderSeed = 4;
const int editedSeed = 5;
const int writtenRadius = 77;
const QColor writtenColor(0xfe, 0xdc, 0xba);

/// What makes a signal come.
enum Trigger { Switch, EditTitle, LoadOtherFile, SetClass, LoadFolder };

/// Who emits it.
enum Emitter { Colors, Fonts, Data, Item, GlobalTheme, CurrentTheme, Manager };

enum Action {
    SwitchTheme,
    SetOwnClass,
    SetOtherClass,
    DestroyParent,
    DestroyOther,
    CreateItems,
    LoadAnotherFolder,
    SetRadius,
    WriteColor,
    Reload,
    ReloadNewTitle,
    DeleteAttached,
    OpenAndClosePopup,
    NestedLoop,
    ActionCount
};

const char *const actionNames[ActionCount] = {
    "switch the theme",
    "set its own class",
    "set another item's class",
    "destroy the item's parent",
    "destroy another item",
    "create items",
    "load another folder",
    "set the radius",
    "write colors",
    "reload the current theme",
    "reload with nothing but a new title",
    "delete an attached theme",
    "open and close a popup",
    "run an event loop that destroys items",
};

struct Source
{
    Emitter emitter;
    QByteArray signal;
    Trigger trigger;
    // Whether the theme is copied to the items once more after a handler of this signal has run,
    // so that what it wrote into the shared values is gone.
    bool copiedAfterwards;
};

QVector<Source> sources()
{
    QVector<Source> list;
    for (const QByteArray &name : colorNames())
        list.append({ Colors, name + "Changed()", Switch, true });
    for (const QByteArray &name : fontNames())
        list.append({ Fonts, name + "Changed()", Switch, true });
    list.append({ Data, "updateTheme()", Switch, true });
    for (const Emitter emitter : { Item, GlobalTheme, CurrentTheme }) {
        for (const char *signal : { "themeObjectChanged()", "radiusChanged()", "needUpdate()" })
            list.append({ emitter, signal, Switch, true });
    }
    list.append({ CurrentTheme, "titleChanged(QString)", EditTitle, true });
    list.append({ CurrentTheme, "filenameChanged()", LoadOtherFile, true });
    list.append({ Item, "classnamesChanged()", SetClass, false });
    list.append({ Item, "themeObjectChanged()", SetClass, false });
    list.append({ Manager, "currentChanged(Theme*)", Switch, false });
    list.append({ Manager, "rowsAboutToBeInserted(QModelIndex,int,int)", LoadFolder, false });
    list.append({ Manager, "rowsInserted(QModelIndex,int,int)", LoadFolder, false });
    return list;
}

const char *const emitterNames[] = { "colors",       "fonts",         "data",   "item",
                                     "global theme", "current theme", "manager" };

/// How QML names an emitter.
const char *const qmlTargets[] = {
    "Theme.colors", "Theme.fonts",  "null",         "itemTheme",
    "globalTheme",  "currentTheme", "ThemeManager",
};

/// Runs a function once, the first time a signal comes after it was armed.
class Handler : public QObject
{
    Q_OBJECT

public:
    void arm(const std::function<void()> &function) { m_function = function; }
    int runs() const { return m_runs; }

public Q_SLOTS:
    void fire()
    {
        if (!m_function)
            return;
        const std::function<void()> function = m_function;
        m_function = nullptr;
        ++m_runs;
        function();
    }

private:
    std::function<void()> m_function;
    int m_runs = 0;
};

/// Follows a list model as a view does, and notes what a view could not follow.
class RowWatch : public QObject
{
    Q_OBJECT

public:
    explicit RowWatch(const QAbstractItemModel *model)
        : m_model(model)
        , m_rows(model->rowCount())
    {
        connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, &RowWatch::announce);
        connect(model, &QAbstractItemModel::rowsInserted, this, &RowWatch::insert);
    }

    QStringList takeProblems()
    {
        check(m_announced < 0 && m_model->rowCount() == m_rows, "ended", m_rows, m_rows);
        return std::exchange(m_problems, QStringList());
    }

private:
    void announce(const QModelIndex &, int first, int last)
    {
        check(m_announced < 0 && first == m_rows && m_model->rowCount() == m_rows, "announced",
              first, last);
        m_announced = first;
    }

    void insert(const QModelIndex &, int first, int last)
    {
        m_rows += last - first + 1;
        check(m_announced == first && m_model->rowCount() == m_rows, "inserted", first, last);
        m_announced = -1;
    }

    void check(bool isRight, const char *what, int first, int last)
    {
        if (isRight)
            return;
        m_problems.append(QStringLiteral("%1 %2 to %3, the model has %4 rows, the watch %5")
                                  .arg(QLatin1String(what))
                                  .arg(first)
                                  .arg(last)
                                  .arg(m_model->rowCount())
                                  .arg(m_rows));
    }

    const QAbstractItemModel *m_model;
    int m_rows;
    int m_announced = -1;
    QStringList m_problems;
};

QByteArray imports()
{
    return "import QtQuick 2.15\nimport QtQuick.Controls 2.15\nimport " TAVOLINS_QML_URI " 1.0\n";
}

} // namespace

/// The QML types of a scene, compiled once.
struct SceneTypes
{
    explicit SceneTypes(QQmlEngine *qmlEngine)
        : engine(qmlEngine)
        , item(qmlEngine)
        , popup(qmlEngine)
    {
        item.setData(imports() + "Item {\n" + probeText() + "}", QUrl());
        popup.setData(imports() + "Popup {\n" + probeText() + "}", QUrl());
    }

    QQmlEngine *engine;
    QQmlComponent item;
    QQmlComponent popup;
};

/// A window with items whose QML shows every value of the theme.
class Scene
{
    Q_DISABLE_COPY(Scene)

public:
    Scene(SceneTypes *types, QQuickWindow *window)
        : m_types(types)
        , m_window(window)
    {
    }

    ~Scene()
    {
        for (const QPointer<QObject> &probe : qAsConst(m_probes))
            delete probe;
    }

    void populate()
    {
        m_parent = createItem(m_window->contentItem());
        m_witness = createItem(m_parent);
        createItem(m_parent, QStringLiteral("quiet"));
        m_other = createItem(m_window->contentItem());
        createItem(m_window->contentItem(), QStringLiteral("warning"));
        createPopup();
    }

    QObject *createItem(QObject *parent, const QString &classname = QString())
    {
        QObject *object = m_types->item.create();
        auto *item = qobject_cast<QQuickItem *>(object);
        item->setParent(parent);
        item->setParentItem(qobject_cast<QQuickItem *>(parent));
        return enter(object, classname);
    }

    QObject *createPopup()
    {
        QObject *popup = m_types->popup.create();
        popup->setParent(m_window->contentItem());
        popup->setProperty("parent", QVariant::fromValue(m_window->contentItem()));
        return enter(popup, QStringLiteral("warning"));
    }

    QObjectList liveProbes() const
    {
        QObjectList objects;
        for (const QPointer<QObject> &probe : m_probes) {
            if (probe)
                objects.append(probe);
        }
        return objects;
    }

    QObject *witness() const { return m_witness; }
    QObject *parentItem() const { return m_parent; }
    QObject *other() const { return m_other; }

    std::unique_ptr<QObject> connectInQml(const Source &source, Handler *handler, Theme *current)
    {
        const QByteArray name = source.signal.left(source.signal.indexOf('('));
        const QByteArray function = "on" + name.left(1).toUpper() + name.mid(1);
        auto *context = new QQmlContext(m_types->engine);
        context->setContextProperty(QStringLiteral("handler"), handler);
        context->setContextProperty(QStringLiteral("itemTheme"), Theme::attachedTheme(m_witness));
        context->setContextProperty(QStringLiteral("globalTheme"), Theme::global());
        context->setContextProperty(QStringLiteral("currentTheme"), current);
        QQmlComponent component(m_types->engine);
        component.setData(imports() + "Connections { target: " + qmlTargets[source.emitter]
                                  + "; function " + function + "() { handler.fire() } }",
                          QUrl());
        std::unique_ptr<QObject> connections(component.create(context));
        context->setParent(connections.get());
        return connections;
    }

private:
    QObject *enter(QObject *probe, const QString &classname)
    {
        m_probes.append(probe);
        if (!classname.isEmpty())
            Theme::attachedTheme(probe)->setClassnames(classname);
        return probe;
    }

    SceneTypes *m_types;
    QVector<QPointer<QObject>> m_probes;
    QPointer<QObject> m_parent;
    QPointer<QObject> m_witness;
    QPointer<QObject> m_other;
    QQuickWindow *m_window;
};

/// Handlers of the plugin's signals that change what the signal is about.
class tst_Reentrancy : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void matrix_data();
    void matrix();
    void engineDeletedInHandler_data();
    void engineDeletedInHandler();
    void attachedThemeDeletesItself_data();
    void attachedThemeDeletesItself();
    void rowsKeepTheirOrderInViews_data();
    void rowsKeepTheirOrderInViews();
    void reloadDuringTheOnlyCopy_data();
    void reloadDuringTheOnlyCopy();
    void themeReplacedAtItsAddress();
    void waitingThemeDestroyedWhileFolderLoads();
    void themeDestroyedByItsFonts();

private:
    Theme *load(const QString &name, int seed);
    QObject *emitterOf(const Source &source, const Scene &scene, const Theme *current) const;
    void connectNatively(const Source &source, QObject *emitter, Handler *handler);
    void trigger(Trigger trigger, Scene &scene);
    void perform(Action action, Scene &scene);
    static ThemeLook expectedLook(Action action, bool copiedAfterwards, const QString &classname);
    void checkProbes(Action action, bool copiedAfterwards, const Scene &scene);
    void checkConnections(const Scene &scene);
    void runRow(const Source &source, Action action, bool inQml);
    void removeThemes();

    std::unique_ptr<ObjectCount> m_objects;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<SceneTypes> m_types;
    std::unique_ptr<QQuickWindow> m_window;
    Theme *m_ownTheme = nullptr;
    int m_row = 0;
    int m_objectsBefore = -1;

    // Of the row that runs.
    QPointer<Theme> m_day;
    QPointer<Theme> m_night;
    QPointer<Theme> m_third;
    std::unique_ptr<QObject> m_bare;
};

void tst_Reentrancy::initTestCase()
{
    m_objects.reset(new ObjectCount);
    m_engine.reset(new QQmlEngine);
    m_engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    m_types.reset(new SceneTypes(m_engine.get()));
    m_window.reset(new QQuickWindow);
    m_window->show();
    m_ownTheme = ThemeManager::getInstance()->current();
    QCOMPARE(Theme::global(), m_ownTheme);
    // What an engine creates once for each singleton.
    QQmlComponent component(m_engine.get());
    component.setData(imports() + "Connections { target: ThemeManager }", QUrl());
    QVERIFY(std::unique_ptr<QObject>(component.create()));
}

void tst_Reentrancy::cleanupTestCase()
{
    m_window.reset();
    m_types.reset();
    m_engine.reset();
    m_objects.reset();
}

/// A theme of the catalogue with a title and a file of its own.
Theme *tst_Reentrancy::load(const QString &name, int seed)
{
    const QString title = QStringLiteral("%1 %2").arg(name).arg(m_row);
    write(QStringLiteral("%1/theme.thm").arg(name), themeLookText(title, seed));
    ThemeManager *manager = ThemeManager::getInstance();
    manager->loadThemes(folder() + QLatin1Char('/') + name);
    return manager->themeFromName(title);
}

QObject *tst_Reentrancy::emitterOf(const Source &source, const Scene &scene,
                                   const Theme *current) const
{
    Theme *global = Theme::global();
    switch (source.emitter) {
    case Colors:
        return global->colors();
    case Fonts:
        return global->fonts();
    case Data:
        return global->colors()->parent();
    case Item:
        return Theme::attachedTheme(scene.witness());
    case GlobalTheme:
        return global;
    case CurrentTheme:
        return const_cast<Theme *>(current);
    case Manager:
        return ThemeManager::getInstance();
    }
    Q_UNREACHABLE();
}

void tst_Reentrancy::connectNatively(const Source &source, QObject *emitter, Handler *handler)
{
    const QMetaObject *meta = emitter->metaObject();
    const int signal = meta->indexOfSignal(source.signal.constData());
    QVERIFY(signal >= 0);
    const QMetaMethod fire = handler->metaObject()->method(
            handler->metaObject()->indexOfSlot("fire()"));
    QVERIFY(connect(emitter, meta->method(signal), handler, fire));
}

void tst_Reentrancy::trigger(Trigger trigger, Scene &scene)
{
    ThemeManager *manager = ThemeManager::getInstance();
    switch (trigger) {
    case Switch:
        manager->setCurrent(m_night);
        return;
    case EditTitle:
        write(QStringLiteral("Night/theme.thm"),
              themeLookText(QStringLiteral("Midnight %1").arg(m_row), nightSeed));
        m_night->reload();
        return;
    case LoadOtherFile: {
        const QString path = write(QStringLiteral("Night/other.thm"),
                                   themeLookText(QStringLiteral("Night %1").arg(m_row), nightSeed));
        m_night->load(path);
        return;
    }
    case SetClass:
        Theme::attachedTheme(scene.witness())->setClassnames(QStringLiteral("quiet"));
        return;
    case LoadFolder:
        write(QStringLiteral("pair/one.thm"),
              themeLookText(QStringLiteral("One %1").arg(m_row), thirdSeed));
        write(QStringLiteral("pair/two.thm"),
              themeLookText(QStringLiteral("Two %1").arg(m_row), thirdSeed));
        manager->loadThemes(folder() + QLatin1String("/pair"));
        return;
    }
}

void tst_Reentrancy::perform(Action action, Scene &scene)
{
    ThemeManager *manager = ThemeManager::getInstance();
    switch (action) {
    case SwitchTheme:
        manager->setCurrent(m_third);
        return;
    case SetOwnClass:
        Theme::attachedTheme(scene.witness())->setClassnames(QStringLiteral("warning"));
        return;
    case SetOtherClass:
        Theme::attachedTheme(scene.other())->setClassnames(QStringLiteral("warning"));
        return;
    case DestroyParent:
        delete scene.parentItem();
        return;
    case DestroyOther:
        delete scene.other();
        return;
    case CreateItems:
        scene.createItem(scene.parentItem());
        scene.createItem(scene.parentItem(), QStringLiteral("warning"));
        scene.createItem(scene.other(), QStringLiteral("quiet"));
        return;
    case LoadAnotherFolder: {
        const QString title = QStringLiteral("Folder %1").arg(m_row);
        write(QStringLiteral("folder/a.thm"),
              themeLookText(title + QLatin1String(" a"), thirdSeed));
        write(QStringLiteral("folder/b.thm"), themeLookText(title, folderSeed));
        manager->loadThemes(folder() + QLatin1String("/folder"), title);
        return;
    }
    case SetRadius:
        Theme::attachedTheme(scene.other())->setRadius(writtenRadius);
        return;
    case WriteColor:
        Theme::global()->colors()->setForeground(writtenColor);
        Theme::global()->colors()->setSelection(writtenColor);
        return;
    case Reload:
    case ReloadNewTitle: {
        // With nothing but a new title, there is no difference in the values to be found.
        const int seed = action == Reload ? editedSeed : nightSeed;
        QFile file(manager->current()->filename());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(themeLookText(QStringLiteral("Edited %1").arg(m_row), seed));
        file.close();
        QCOMPARE(manager->current()->reload(), 0);
        return;
    }
    case DeleteAttached:
        delete Theme::attachedTheme(m_bare.get());
        return;
    case OpenAndClosePopup: {
        QObject *popup = scene.createPopup();
        QVERIFY(QMetaObject::invokeMethod(popup, "open"));
        QVERIFY(popup->property("visible").toBool());
        QVERIFY(QMetaObject::invokeMethod(popup, "close"));
        QVERIFY(!popup->property("visible").toBool());
        return;
    }
    case NestedLoop: {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, [&] {
            delete scene.parentItem();
            delete scene.other();
            QTimer::singleShot(0, &loop, &QEventLoop::quit);
        });
        loop.exec();
        return;
    }
    case ActionCount:
        break;
    }
    Q_UNREACHABLE();
}

ThemeLook tst_Reentrancy::expectedLook(Action action, bool copiedAfterwards,
                                       const QString &classname)
{
    switch (action) {
    case SwitchTheme:
        return ThemeLook::ofSeed(thirdSeed, classname);
    case LoadAnotherFolder:
        return ThemeLook::ofSeed(folderSeed, classname);
    case Reload:
        return ThemeLook::ofSeed(editedSeed, classname);
    case DeleteAttached:
        // Until the next switch, the values may be gone for all.
        return ThemeLook::ofSeed(daySeed, classname);
    default:
        break;
    }
    ThemeLook look = ThemeLook::ofSeed(nightSeed, classname);
    if (copiedAfterwards)
        return look;
    // What a class resolved to is not computed anew by a write into the shared values.
    if (action == WriteColor && classname.isEmpty()) {
        look.colors.first() = writtenColor;
        look.colors.last() = writtenColor;
    }
    return look;
}

void tst_Reentrancy::checkProbes(Action action, bool copiedAfterwards, const Scene &scene)
{
    const QObjectList probes = scene.liveProbes();
    for (const QObject *probe : probes) {
        const Theme *theme = Theme::attachedTheme(const_cast<QObject *>(probe));
        ThemeLook expected = expectedLook(action, copiedAfterwards, theme->classnames());
        const bool radiusStands = action == SetRadius && !copiedAfterwards;
        // A radius is announced by the one theme that it was set on, though all have it.
        if (radiusStands && probe == scene.other())
            expected.radius = writtenRadius;
        const ThemeLook shown = ThemeLook::ofProbe(probe);
        QVERIFY2(shown == expected,
                 qPrintable(QStringLiteral("%1 \"%2\" shows\n%3\nnot\n%4")
                                    .arg(QLatin1String(probe->metaObject()->className()),
                                         theme->classnames(), shown.text(), expected.text())));
        if (radiusStands)
            expected.radius = writtenRadius;
        QVERIFY(ThemeLook::ofTheme(theme) == expected);
    }
    QCOMPARE(Theme::global()->title(), ThemeManager::getInstance()->current()->title());
}

void tst_Reentrancy::checkConnections(const Scene &scene)
{
    const ThemeManager *manager = ThemeManager::getInstance();
    const QObjectList probes = scene.liveProbes();
    const QObject *data = Theme::global()->colors()->parent();
    const bool bareHasTheme = Theme::attachedTheme(m_bare.get());
    // Each item's theme, and the global theme.
    QCOMPARE(receiverCount(data, SIGNAL(updateTheme())), probes.size() + 1 + int(bareHasTheme));
    QCOMPARE(receiverCount(manager->current(), SIGNAL(needUpdate())), 1);
    for (const QObject *probe : probes) {
        const Theme *theme = Theme::attachedTheme(const_cast<QObject *>(probe));
        const int overloading = theme->classnames().isEmpty() ? 0 : 1;
        QCOMPARE(theme->findChildren<Theme *>().size(), overloading);
    }
    QCOMPARE(m_ownTheme->findChildren<Theme *>().size(), 0);
    QCOMPARE(manager->current()->findChildren<Theme *>().size(), 0);
}

void tst_Reentrancy::removeThemes()
{
    const auto themes = ThemeManager::getInstance()->findChildren<Theme *>(
            QString(), Qt::FindDirectChildrenOnly);
    for (Theme *theme : themes) {
        if (theme != m_ownTheme)
            delete theme;
    }
}

void tst_Reentrancy::runRow(const Source &source, Action action, bool inQml)
{
    ++m_row;
    ThemeManager *manager = ThemeManager::getInstance();
    m_day = load(QStringLiteral("Day"), daySeed);
    m_night = load(QStringLiteral("Night"), nightSeed);
    m_third = load(QStringLiteral("Third"), thirdSeed);
    QVERIFY(m_day && m_night && m_third);
    manager->setCurrent(source.trigger == Switch ? m_day : m_night);

    Scene scene(m_types.get(), m_window.get());
    scene.populate();
    m_bare.reset(new QObject);
    QVERIFY(qmlAttachedPropertiesObject<Theme>(m_bare.get()));

    // One view is told before the handler, the other one after it.
    RowWatch earlyView(manager);
    auto handler = std::make_unique<Handler>();
    std::unique_ptr<QObject> connections;
    if (inQml)
        connections = scene.connectInQml(source, handler.get(), m_night);
    else
        connectNatively(source, emitterOf(source, scene, m_night), handler.get());
    RowWatch lateView(manager);
    handler->arm([&] { perform(action, scene); });
    trigger(source.trigger, scene);
    QCOMPARE(handler->runs(), 1);
    connections.reset();
    handler.reset();

    deleteDeferred();
    QCoreApplication::processEvents();
    if (action == DeleteAttached) {
        m_bare.reset(new QObject);
        manager->setCurrent(m_day);
    }
    deleteDeferred();
    QCOMPARE(earlyView.takeProblems(), QStringList());
    QCOMPARE(lateView.takeProblems(), QStringList());
    // The engine runs the handlers of QML before those of native code, so before the themes'
    // own that a switch ends with.
    const bool copiedAfterwards = source.copiedAfterwards || (inQml && source.trigger == Switch);
    checkProbes(action, copiedAfterwards, scene);
    checkConnections(scene);
}

void tst_Reentrancy::matrix_data()
{
    QTest::addColumn<int>("sourceIndex");
    QTest::addColumn<int>("action");
    QTest::addColumn<bool>("inQml");
    const QVector<Source> list = sources();
    for (const bool inQml : { false, true }) {
        for (int i = 0; i < list.size(); ++i) {
            const Source &source = list.at(i);
            // QML has no way to the data behind the global theme.
            if (inQml && source.emitter == Data)
                continue;
            for (int action = 0; action < ActionCount; ++action) {
                const QByteArray name = source.signal.left(source.signal.indexOf('('));
                QTest::addRow("%s: %s of %s (%d): %s", inQml ? "QML" : "native", name.constData(),
                              emitterNames[source.emitter], source.trigger, actionNames[action])
                        << i << action << inQml;
            }
        }
    }
}

void tst_Reentrancy::matrix()
{
    QFETCH(int, sourceIndex);
    QFETCH(int, action);
    QFETCH(bool, inQml);
    runRow(sources().at(sourceIndex), Action(action), inQml);
    m_bare.reset();
    removeThemes();
    deleteDeferred();
    m_engine->collectGarbage();
    deleteDeferred();
    const int objects = m_objects->value();
    if (m_objectsBefore >= 0)
        QCOMPARE(objects, m_objectsBefore);
    m_objectsBefore = objects;
}

void tst_Reentrancy::engineDeletedInHandler_data()
{
    QTest::addColumn<int>("sourceIndex");
    const QVector<Source> list = sources();
    for (int i = 0; i < list.size(); ++i) {
        const QByteArray name = list.at(i).signal.left(list.at(i).signal.indexOf('('));
        QTest::addRow("%s of %s (%d)", name.constData(), emitterNames[list.at(i).emitter],
                      list.at(i).trigger)
                << i;
    }
}

void tst_Reentrancy::engineDeletedInHandler()
{
    QFETCH(int, sourceIndex);
    const Source source = sources().at(sourceIndex);
    ++m_row;
    m_day = load(QStringLiteral("Day"), daySeed);
    m_night = load(QStringLiteral("Night"), nightSeed);
    ThemeManager *manager = ThemeManager::getInstance();
    manager->setCurrent(source.trigger == Switch ? m_day : m_night);

    auto engine = std::make_unique<QQmlEngine>();
    engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    auto types = std::make_unique<SceneTypes>(engine.get());
    auto scene = std::make_unique<Scene>(types.get(), m_window.get());
    scene->populate();
    auto handler = std::make_unique<Handler>();
    connectNatively(source, emitterOf(source, *scene, m_night), handler.get());
    handler->arm([&] {
        scene.reset();
        types.reset();
        engine.reset();
    });
    trigger(source.trigger, *scene);
    QCOMPARE(handler->runs(), 1);
    handler.reset();

    deleteDeferred();
    QCOMPARE(manager->current(), m_night.data());
    QVERIFY(ThemeLook::ofTheme(Theme::global()) == ThemeLook::ofSeed(nightSeed));
    const QObject *data = Theme::global()->colors()->parent();
    QCOMPARE(receiverCount(data, SIGNAL(updateTheme())), 1);
    removeThemes();
}

void tst_Reentrancy::attachedThemeDeletesItself_data()
{
    QTest::addColumn<QByteArray>("signal");
    for (const char *signal :
         { "themeObjectChanged()", "radiusChanged()", "needUpdate()", "classnamesChanged()",
           "titleChanged(QString)", "filenameChanged()" })
        QTest::addRow("%s", signal) << QByteArray(signal);
}

void tst_Reentrancy::attachedThemeDeletesItself()
{
    QFETCH(QByteArray, signal);
    ++m_row;
    m_day = load(QStringLiteral("Day"), daySeed);
    m_night = load(QStringLiteral("Night"), nightSeed);
    ThemeManager *manager = ThemeManager::getInstance();
    manager->setCurrent(m_day);
    QObject object;
    QObject sharing;
    QPointer<Theme> theme = Theme::qmlAttachedProperties(&object);
    const QPointer<Theme> sharingTheme = Theme::qmlAttachedProperties(&sharing);
    const QString path = theme->filename() + QLatin1String("never.thm");

    Handler handler;
    connectNatively({ Item, signal, Switch, true }, theme, &handler);
    handler.arm([&] { delete theme; });
    if (signal == "classnamesChanged()")
        theme->setClassnames(QStringLiteral("warning"));
    else if (signal == "titleChanged(QString)")
        theme->setTitle(QStringLiteral("Title"));
    else if (signal == "filenameChanged()")
        QCOMPARE(theme->load(path), 1);
    else
        manager->setCurrent(m_night);
    QCOMPARE(handler.runs(), 1);
    QVERIFY(!theme);

    deleteDeferred();
    manager->setCurrent(manager->current() == m_day ? m_night : m_day);
    QVERIFY(ThemeLook::ofTheme(Theme::global()) == ThemeLook::ofTheme(manager->current()));
    QVERIFY(ThemeLook::ofTheme(sharingTheme) == ThemeLook::ofTheme(manager->current()));
    removeThemes();
}

void tst_Reentrancy::rowsKeepTheirOrderInViews_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<bool>("handlerFirst");
    for (const char *signal :
         { "rowsAboutToBeInserted(QModelIndex,int,int)", "rowsInserted(QModelIndex,int,int)" }) {
        QTest::addRow("%s, handler before the view", signal) << QByteArray(signal) << true;
        QTest::addRow("%s, handler after the view", signal) << QByteArray(signal) << false;
    }
}

/// A folder that is loaded while rows are inserted: a view shows each theme once, in the order of
/// the catalogue, and the row of the theme made current is the right one.
void tst_Reentrancy::rowsKeepTheirOrderInViews()
{
    QFETCH(QByteArray, signal);
    QFETCH(bool, handlerFirst);
    ++m_row;
    ThemeManager *manager = ThemeManager::getInstance();
    Scene scene(m_types.get(), m_window.get());
    scene.populate();
    QQmlComponent component(m_engine.get());
    component.setData(imports()
                              + "Item { property var titles: {\n"
                                "let list = []; for (let i = 0; i < rows.count; ++i)"
                                " list.push(rows.itemAt(i) ? rows.itemAt(i).title : 'none');"
                                " return list }\n"
                                "Repeater { id: rows; model: ThemeManager\n"
                                "Item { property string title: display || '' } } }",
                      QUrl());
    const Source source{ Manager, signal, LoadFolder, false };
    Handler handler;
    std::unique_ptr<QObject> view;
    if (handlerFirst)
        connectNatively(source, manager, &handler);
    view.reset(component.create());
    QVERIFY2(view, qPrintable(component.errorString()));
    if (!handlerFirst)
        connectNatively(source, manager, &handler);
    handler.arm([&] { perform(LoadAnotherFolder, scene); });
    trigger(LoadFolder, scene);
    QCOMPARE(handler.runs(), 1);

    QStringList titles;
    for (int row = 0; row < manager->rowCount(); ++row)
        titles.append(manager->index(row).data().toString());
    QCOMPARE(view->property("titles").toStringList(), titles);
    QCOMPARE(manager->current()->title(), QStringLiteral("Folder %1").arg(m_row));
    QCOMPARE(titles.at(manager->currentIndex()), manager->current()->title());
    // Each of them follows the current theme, also those that were announced later.
    const auto themes = titles.mid(titles.size() - 4);
    for (const QString &title : themes) {
        QVERIFY(!title.isEmpty());
        QSignalSpy updates(manager->themeFromName(title), &Theme::needUpdate);
        manager->setCurrent(m_ownTheme);
        manager->setCurrent(manager->themeFromName(title));
        QCOMPARE(updates.count(), 1);
    }
    removeThemes();
}

void tst_Reentrancy::reloadDuringTheOnlyCopy_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("new values") << themeLookText(QStringLiteral("Title"), editedSeed);
    QTest::newRow("new title") << themeLookText(QStringLiteral("Other title"), nightSeed);
}

/// A theme outside of the catalogue is copied once by a switch. What a handler has it read anew
/// meanwhile must arrive all the same.
void tst_Reentrancy::reloadDuringTheOnlyCopy()
{
    QFETCH(QByteArray, text);
    ThemeManager *manager = ThemeManager::getInstance();
    const QString path = write(QStringLiteral("theme.thm"),
                               themeLookText(QStringLiteral("Title"), nightSeed));
    Theme theme;
    QCOMPARE(theme.load(path), 0);
    QObject object;
    Theme *attached = Theme::qmlAttachedProperties(&object);
    Handler handler;
    connectNatively({ Item, "needUpdate()", Switch, false }, attached, &handler);
    handler.arm([&] {
        write(QStringLiteral("theme.thm"), text);
        theme.reload();
    });
    manager->setCurrent(&theme);
    QCOMPARE(handler.runs(), 1);
    QVERIFY(ThemeLook::ofTheme(attached) == ThemeLook::ofTheme(&theme));
    QCOMPARE(Theme::global()->title(), theme.title());
}

/// A new theme that takes the place of a destroyed one in memory is not mistaken for it.
void tst_Reentrancy::themeReplacedAtItsAddress()
{
    ThemeManager *manager = ThemeManager::getInstance();
    const QString night = write(QStringLiteral("night.thm"),
                                themeLookText(QStringLiteral("Night"), nightSeed));
    const QString third = write(QStringLiteral("third.thm"),
                                themeLookText(QStringLiteral("Third"), thirdSeed));
    alignas(Theme) char place[sizeof(Theme)];
    auto *theme = new (place) Theme;
    theme->load(night);
    QObject object;
    Theme *attached = Theme::qmlAttachedProperties(&object);
    Handler handler;
    connectNatively({ Item, "needUpdate()", Switch, false }, attached, &handler);
    handler.arm([&] {
        theme->~Theme();
        theme = new (place) Theme;
        manager->setCurrent(theme);
        theme->load(third);
    });
    manager->setCurrent(theme);
    QCOMPARE(handler.runs(), 1);
    QCOMPARE(manager->current(), theme);
    QVERIFY(ThemeLook::ofTheme(attached) == ThemeLook::ofSeed(thirdSeed));
    theme->~Theme();
}

/// The first theme of the folder waits for the second one; a handler of the second one's row
/// destroys both.
void tst_Reentrancy::waitingThemeDestroyedWhileFolderLoads()
{
    ThemeManager *manager = ThemeManager::getInstance();
    write(QStringLiteral("themes/a.thm"), "{\"title\": \"A\", \"extends\": \"B\"}");
    write(QStringLiteral("themes/b.thm"), themeLookText(QStringLiteral("B"), daySeed));
    const int rowsBefore = manager->rowCount();
    Handler handler;
    connectNatively({ Manager, "rowsInserted(QModelIndex,int,int)", LoadFolder, false }, manager,
                    &handler);
    handler.arm([this] { removeThemes(); });
    manager->loadThemes(folder() + QLatin1String("/themes"), QStringLiteral("A"));
    QCOMPARE(handler.runs(), 1);
    QCOMPARE(manager->rowCount(), rowsBefore + 1);
    QVERIFY(!manager->index(rowsBefore).data().isValid());
    QCOMPARE(manager->current(), m_ownTheme);
}

/// Registering the fonts beside a theme is announced by the application; a handler destroys the
/// theme that is being loaded.
void tst_Reentrancy::themeDestroyedByItsFonts()
{
    const QString font = QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    QVERIFY(QFile::exists(font));
    QVERIFY(QDir(folder()).mkpath(QStringLiteral("themes/fonts")));
    QVERIFY(QFile::copy(font, folder() + QLatin1String("/themes/fonts/font.ttf")));
    write(QStringLiteral("themes/a.thm"), themeLookText(QStringLiteral("A"), daySeed));
    ThemeManager *manager = ThemeManager::getInstance();
    const int rowsBefore = manager->rowCount();
    Handler handler;
    connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, &handler, &Handler::fire);
    handler.arm([this] { removeThemes(); });
    manager->loadThemes(folder() + QLatin1String("/themes"));
    QCOMPARE(handler.runs(), 1);
    QCOMPARE(manager->rowCount(), rowsBefore);
}

TAVOLINS_TEST_MAIN(tst_Reentrancy)
#include "tst_reentrancy.moc"
