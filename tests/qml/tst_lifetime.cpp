#include "manager/thememanager.h"
#include "qml/qmltestcase.h"
#include "support/heap.h"
#include "support/receivers.h"
#include "support/themetext.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"

#include <QtCore/QJsonObject>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <functional>
#include <vector>

/// Attached themes end with their items and take nothing along that others use.
class tst_Lifetime : public QmlTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void manyItems_data();
    void manyItems();
    void manySwitches();
    void survivorsFollow();
    void itemBeforeEngine();
    void itemAfterEngine();
    void attachedThemeEndsWithItsItem();
    void attachedThemeStaysWhileItsFunctionsRun();
    void nativeCodeDestroysThemes_data();
    void nativeCodeDestroysThemes();
    void attachedThemeIsNoGarbage();
    void attachedThemeHasNoParent();
    void everyItemHasOne();
    void itemDestroyedWithoutAnEventLoop();
    void itemDestroyedByItsOwnUpdate();
    void attachedThemeDeletedNatively();
    void newItemsAfterANativeDeletion();
    void manyEngines();
};

Q_DECLARE_METATYPE(std::function<void()>)

namespace {

ThemeManager &manager()
{
    return *ThemeManager::getInstance();
}

QObject *sharedData()
{
    return Theme::global()->colors()->parent();
}

/// How many themes follow the shared data.
int followerCount()
{
    return receiverCount(sharedData(), SIGNAL(updateTheme()));
}

/// Runs what deleteLater() has put off. Qt drops the handled entries of its event list only when
/// all kinds of events are sent.
void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::sendPostedEvents();
}

const char *const itemQml = R"(
    import QtQuick 2.15
    import Tavolins 1.0
    Item {
        property color fg: Theme.colors.foreground
        property int rounding: Theme.radius
        Theme.classnames: "header"
    })";

} // namespace

void tst_Lifetime::initTestCase()
{
    ThemeManager::getInstance();
    addModule(QStringLiteral("Tavolins"));
}

void tst_Lifetime::cleanup()
{
    park();
    TestCase::cleanup();
}

void tst_Lifetime::manyItems_data()
{
    QTest::addColumn<bool>("switching");

    QTest::newRow("nothing else happens") << false;
    QTest::newRow("with a switch while they live") << true;
}

void tst_Lifetime::manyItems()
{
    QFETCH(const bool, switching);

    constexpr int rounds = 20;
    constexpr int itemsARound = 100;
    constexpr int warmUp = 5;
    // A theme alone is larger than 100 bytes, so 15 rounds of them would be 150,000 at least.
    constexpr qint64 bound = 8192;

    const QByteArray scope = "\"header\": {\"colors\": {\"foreground\": \"#0000ff\"}}";
    Theme *a = makeCurrent(QStringLiteral("a.thm"),
                           coloredThemeText(uniqueTitle("A"), 1, "#010101", scope));
    Theme *b = makeCurrent(QStringLiteral("b.thm"),
                           coloredThemeText(uniqueTitle("B"), 2, "#020202", scope));
    const auto engine = newEngine();
    QQmlComponent component(engine.get());
    component.setData(itemQml, QUrl::fromLocalFile(folder() + QLatin1String("/Item.qml")));
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    const std::unique_ptr<QObject> survivor(component.create());
    QVERIFY(survivor);

    const int connections = followerCount();
    QVERIFY(connections >= 2); // the global theme's and the survivor's at least
    qint64 heapAfterWarmUp = 0;
    for (int round = 1; round <= rounds; ++round) {
        std::vector<std::unique_ptr<QObject>> items;
        QList<QPointer<Theme>> themes;
        themes.reserve(itemsARound);
        items.reserve(itemsARound);
        for (int i = 0; i < itemsARound; ++i) {
            items.emplace_back(component.create());
            themes.append(Theme::attachedTheme(items.back().get()));
            QVERIFY(themes.last());
        }
        QCOMPARE(followerCount(), connections + itemsARound);
        if (switching)
            manager().setCurrent(round % 2 ? a : b);
        QCOMPARE(items.front()->property("fg").value<QColor>(), QColor(0, 0, 255));

        items.clear();
        QCOMPARE(followerCount(), connections);
        for (const QPointer<Theme> &theme : qAsConst(themes))
            QVERIFY(!theme);
        settle();
        themes = QList<QPointer<Theme>>();
        engine->collectGarbage();
        if (round == warmUp)
            heapAfterWarmUp = heapInUse();
    }
    const qint64 growth = heapInUse() - heapAfterWarmUp;
    QVERIFY2(growth < bound, qPrintable(QStringLiteral("the heap grew by %1 bytes").arg(growth)));

    QCOMPARE(survivor->property("fg").value<QColor>(), QColor(0, 0, 255));
    manager().setCurrent(a);
    QCOMPARE(survivor->property("rounding").toInt(), 1);
    manager().setCurrent(b);
    QCOMPARE(survivor->property("rounding").toInt(), 2);
}

void tst_Lifetime::manySwitches()
{
    // A thousand switches with items that have a class: each makes new groups for them.
    constexpr qint64 bound = 8192;
    const QByteArray scope = "\"header\": {\"colors\": {\"foreground\": \"#0000ff\"}}";
    Theme *a = makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1, scope));
    Theme *b = makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2, scope));
    const auto engine = newEngine();
    std::vector<std::unique_ptr<QObject>> items;
    for (int i = 0; i < 10; ++i) {
        items.push_back(create(engine.get(), itemQml));
        QVERIFY(items.back());
    }
    const int connections = followerCount();
    // The lists in which the engine's sweeps collect freed wrappers double now and then, at other
    // times with each Qt: what counts is what every thousand switches add.
    constexpr int window = 1000;
    qint64 heapBefore = 0;
    qint64 growth = std::numeric_limits<qint64>::max();
    for (int i = 1; i <= 5 * window; ++i) {
        manager().setCurrent(i % 2 ? a : b);
        if (i % 50 == 0) {
            settle();
            engine->collectGarbage();
        }
        if (i % window == 0) {
            if (i > window)
                growth = std::min(growth, heapInUse() - heapBefore);
            heapBefore = heapInUse();
        }
    }
    QCOMPARE(followerCount(), connections);
    for (const auto &item : items)
        QVERIFY(Theme::attachedTheme(item.get())->children().size() <= 1);
    QVERIFY2(growth < bound, qPrintable(QStringLiteral("the heap grew by %1 bytes").arg(growth)));
}

void tst_Lifetime::survivorsFollow()
{
    Theme *a = makeCurrent(QStringLiteral("a.thm"),
                           coloredThemeText(uniqueTitle("A"), 1, "#0a0a0a"));
    const auto engine = newEngine();
    std::vector<std::unique_ptr<QObject>> items;
    for (int i = 0; i < 30; ++i) {
        items.push_back(create(engine.get(), R"(
            import QtQuick 2.15
            import Tavolins 1.0
            Item { property color fg: Theme.colors.foreground; property int updates: 0
                   Theme.onNeedUpdate: ++updates })"));
        QVERIFY(items.back());
    }
    for (std::size_t i = 0; i < items.size(); i += 2)
        items[i].reset();
    deleteDeferred();
    for (std::size_t i = 1; i < items.size(); i += 2) {
        QCOMPARE(items[i]->property("fg").value<QColor>(), QColor(10, 10, 10));
        QCOMPARE(items[i]->property("updates").toInt(), 0);
    }
    QCOMPARE(Theme::global()->colors()->foreground(), QColor(10, 10, 10));
    makeCurrent(QStringLiteral("b.thm"), coloredThemeText(uniqueTitle("B"), 2, "#0b0b0b"));
    for (std::size_t i = 1; i < items.size(); i += 2) {
        QCOMPARE(items[i]->property("fg").value<QColor>(), QColor(11, 11, 11));
        QCOMPARE(items[i]->property("updates").toInt(), 2);
    }
    QCOMPARE(a->radius(), 1);
}

void tst_Lifetime::itemBeforeEngine()
{
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const int connections = followerCount();
    auto engine = newEngine();
    auto item = create(engine.get(), itemQml);
    QVERIFY(item);
    const QPointer<Theme> theme(Theme::attachedTheme(item.get()));
    QVERIFY(theme);
    item.reset();
    QCOMPARE(followerCount(), connections);
    deleteDeferred();
    QVERIFY(!theme);
    engine.reset();
    QCOMPARE(Theme::global()->radius(), 1);
}

void tst_Lifetime::itemAfterEngine()
{
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const int connections = followerCount();
    auto engine = newEngine();
    auto item = create(engine.get(), itemQml);
    QVERIFY(item);
    const QPointer<Theme> theme(Theme::attachedTheme(item.get()));
    QVERIFY(theme);
    engine.reset();
    // Bindings ended with the engine; the item and its theme are still there.
    makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    QVERIFY(theme);
    QCOMPARE(theme->radius(), 2);
    item.reset();
    QCOMPARE(followerCount(), connections);
    deleteDeferred();
    QVERIFY(!theme);
    QCOMPARE(Theme::global()->radius(), 2);
}

void tst_Lifetime::attachedThemeEndsWithItsItem()
{
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const int connections = followerCount();
    auto item = std::make_unique<QObject>();
    const QPointer<Theme> theme(Theme::qmlAttachedProperties(item.get()));
    item.reset();
    QVERIFY(!theme);
    QCOMPARE(followerCount(), connections);
}

void tst_Lifetime::attachedThemeStaysWhileItsFunctionsRun()
{
    // The engine still uses the sender of a signal after the handlers have returned.
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    auto item = std::make_unique<QObject>();
    const QPointer<Theme> theme(Theme::qmlAttachedProperties(item.get()));
    QSignalSpy update(theme, &Theme::needUpdate);
    connect(theme, &Theme::themeObjectChanged, this, [&] {
        if (!item)
            return;
        item.reset();
        QVERIFY(theme);
        deleteDeferred();
        QVERIFY(theme);
        QCOMPARE(theme->radius(), 0); // let go of the data
        QVERIFY(theme->colors());
        theme->sendUpdate();
        makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    });
    theme->sendUpdate();
    QCOMPARE(update.count(), 0);
    QVERIFY(theme);
    deleteDeferred();
    QVERIFY(!theme);
    QCOMPARE(Theme::global()->radius(), 2);
}

void tst_Lifetime::nativeCodeDestroysThemes_data()
{
    typedef std::function<void()> Destruction;
    QTest::addColumn<Destruction>("destroy");

    const auto destroyGlobal = [] { delete Theme::global(); };
    const auto destroyCurrent = [] { delete manager().current(); };
    QTest::newRow("the global theme") << Destruction(destroyGlobal);
    QTest::newRow("the global theme, and time passes") << Destruction([=] {
        destroyGlobal();
        deleteDeferred();
    });
    QTest::newRow("the current theme") << Destruction(destroyCurrent);
    QTest::newRow("the current theme, after disconnect()") << Destruction([] {
        Theme *current = manager().current();
        current->disconnect();
        delete current;
    });
    QTest::newRow("the current theme and what takes its place") << Destruction([=] {
        destroyCurrent();
        destroyCurrent();
    });
    QTest::newRow("what takes its place, after disconnect()") << Destruction([=] {
        destroyCurrent();
        manager().current()->disconnect();
        destroyCurrent();
    });
    QTest::newRow("the global theme, then the current one") << Destruction([=] {
        destroyGlobal();
        destroyCurrent();
    });
    QTest::newRow("the global theme, then the current one twice") << Destruction([=] {
        destroyGlobal();
        destroyCurrent();
        destroyCurrent();
    });
    QTest::newRow("the current theme, then the global one twice") << Destruction([=] {
        destroyCurrent();
        destroyGlobal();
        deleteDeferred();
        destroyGlobal();
    });
    QTest::newRow("the global theme, and a file is read before the next switch")
            << Destruction([=] {
                   destroyGlobal();
                   QCOMPARE(manager().current()->reload(), 0);
                   QCOMPARE(Theme::global()->parent(), &manager());
               });
    QTest::newRow("the global theme, and a scope is loaded before the next switch") << Destruction(
            [=] {
                Theme *current = manager().current();
                destroyGlobal();
                const QJsonObject scope{ { QStringLiteral("radius"), 9 } };
                const std::unique_ptr<Theme> loaded(current->loadThemeScope(nullptr, scope, true));
                QVERIFY(Theme::global() != loaded.get());
            });
    QTest::newRow("the data that all share") << Destruction([] { delete sharedData(); });
}

/// There is a global theme and a current one whatever native code destroys, and every living item
/// follows it from the next switch on.
void tst_Lifetime::nativeCodeDestroysThemes()
{
    QFETCH(const std::function<void()>, destroy);
    makeCurrent(QStringLiteral("a.thm"), coloredThemeText(uniqueTitle("A"), 1, "#0a0a0a"));
    const auto engine = newEngine();
    std::vector<std::unique_ptr<QObject>> items;
    items.push_back(create(engine.get(), itemQml));
    destroy();
    items.push_back(create(engine.get(), itemQml));

    QVERIFY(manager().current());
    QVERIFY(Theme::global());
    manager().addTheme(nullptr);
    const int row = manager().currentIndex();
    QVERIFY(row == -1
            || manager().data(manager().index(row, 0), Qt::UserRole + 1).value<QObject *>()
                    == manager().current());
    deleteDeferred();
    items.push_back(create(engine.get(), itemQml));
    QVERIFY(manager().current());

    Theme *const theme = makeCurrent(
            QStringLiteral("b.thm"),
            coloredThemeText(uniqueTitle("B"), 2, "#0b0b0b",
                             R"("header": {"colors": {"foreground": "#0c0c0c"}})"));
    QCOMPARE(manager().current(), theme);
    items.push_back(create(engine.get(), itemQml));
    const auto showsTheme = [&](const QColor &color, int radius) {
        for (const auto &item : items) {
            QCOMPARE(item->property("fg").value<QColor>(), color);
            QCOMPARE(item->property("rounding").toInt(), radius);
        }
    };
    showsTheme(QColor(12, 12, 12), 2);
    deleteDeferred();
    makeCurrent(QStringLiteral("c.thm"),
                coloredThemeText(uniqueTitle("C"), 3, "#0b0b0b",
                                 R"("header": {"colors": {"foreground": "#0d0d0d"}})"));
    showsTheme(QColor(13, 13, 13), 3);
}

/// Hands an attached theme to QML, as an application's own objects may.
class ThemeOf : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE static Theme *theme(QObject *item) { return Theme::attachedTheme(item); }
};

void tst_Lifetime::attachedThemeIsNoGarbage()
{
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const auto engine = newEngine();
    ThemeOf access;
    engine->rootContext()->setContextProperty(QStringLiteral("access"), &access);
    const auto item = create(engine.get(), R"(
        import QtQuick 2.15
        import Tavolins 1.0
        Item {
            id: root
            property int rounding: Theme.radius
            function ask() { return access.theme(root).radius }
        })");
    QVERIFY(item);
    QVariant radius;
    QVERIFY(QMetaObject::invokeMethod(item.get(), "ask", Q_RETURN_ARG(QVariant, radius)));
    QCOMPARE(radius.toInt(), 1);
    engine->collectGarbage();
    deleteDeferred();
    QVERIFY(Theme::attachedTheme(item.get()));
    makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    QCOMPARE(item->property("rounding").toInt(), 2);
}

void tst_Lifetime::attachedThemeHasNoParent()
{
    QObject item;
    QVERIFY(!Theme::attachedTheme(&item));
    QVERIFY(!Theme::attachedTheme(nullptr));
    QVERIFY(!Theme::qmlAttachedProperties(&item)->parent());
    const auto engine = newEngine();
    const auto object = create(engine.get(), itemQml);
    QVERIFY(object);
    QVERIFY(!Theme::attachedTheme(object.get())->parent());
    const auto plain = create(engine.get(), "import QtQuick 2.15\nItem {}");
    QVERIFY(plain);
    QVERIFY(!Theme::attachedTheme(plain.get()));
}

void tst_Lifetime::everyItemHasOne()
{
    const auto engine = newEngine();
    const auto root = create(engine.get(), R"(
        import QtQuick 2.15
        import Tavolins 1.0
        Item {
            property Item first: Item { Theme.classnames: "a" }
            property Item second: Item { Theme.classnames: "b" }
            property Item none: Item { property int r: parent ? parent.Theme.radius : 0 }
        })");
    QVERIFY(root);
    auto *first = root->property("first").value<QObject *>();
    auto *second = root->property("second").value<QObject *>();
    QCOMPARE(Theme::attachedTheme(first)->classnames(), QStringLiteral("a"));
    QCOMPARE(Theme::attachedTheme(second)->classnames(), QStringLiteral("b"));
    QVERIFY(Theme::attachedTheme(first) != Theme::attachedTheme(second));
    QVERIFY(!Theme::attachedTheme(root->property("none").value<QObject *>()));
    QVERIFY(!Theme::attachedTheme(root.get()));
}

void tst_Lifetime::itemDestroyedWithoutAnEventLoop()
{
    // Ten thousand items while no event is handled: each has let go of the data at once.
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const int connections = followerCount();
    for (int i = 0; i < 10000; ++i) {
        const QObject item;
        Theme::qmlAttachedProperties(const_cast<QObject *>(&item));
    }
    QCOMPARE(followerCount(), connections);
    QSignalSpy update(Theme::global(), &Theme::needUpdate);
    makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    QCOMPARE(update.count(), 4);
}

void tst_Lifetime::itemDestroyedByItsOwnUpdate()
{
    Theme *a = makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const auto engine = newEngine();
    const auto root = create(engine.get(), R"(
        import QtQuick 2.15
        import Tavolins 1.0
        Item {
            id: root
            property int destroyed: 0
            property bool armed: false
            Repeater {
                id: repeater
                model: 10
                Item {
                    property int rounding: Theme.radius
                    onRoundingChanged: if (root.armed)
                        repeater.model = Math.max(0, repeater.model - 3)
                    Component.onDestruction: ++root.destroyed
                }
            }
            property alias count: repeater.count
        })");
    QVERIFY(root);
    QCOMPARE(root->property("count").toInt(), 10);
    root->setProperty("armed", true);
    makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    deleteDeferred();
    QVERIFY(root->property("count").toInt() < 10);
    QVERIFY(root->property("destroyed").toInt() > 0);
    manager().setCurrent(a);
    deleteDeferred();
    QCOMPARE(Theme::global()->radius(), 1);
}

void tst_Lifetime::attachedThemeDeletedNatively()
{
    Theme *a = makeCurrent(QStringLiteral("a.thm"),
                           coloredThemeText(uniqueTitle("A"), 1, "#0a0a0a"));
    QObject item;
    Theme *other = Theme::qmlAttachedProperties(&item);
    const QPointer<QObject> data(sharedData());
    QCOMPARE(other->colors()->parent(), data.data());

    // Whoever deletes a theme takes the shared data along, once the event loop comes to it.
    delete Theme::getObjectTheme(nullptr);
    QVERIFY(data);
    QCOMPARE(other->radius(), 1);
    deleteDeferred();
    QVERIFY(!data);
    for (Theme *theme : { Theme::global(), other }) {
        QCOMPARE(theme->radius(), 0);
        QVERIFY(theme->colors());
        QVERIFY(theme->fonts());
        QCOMPARE(theme->getStyle(QStringLiteral("Button")), QString());
        theme->setRadius(4);
        QCOMPARE(theme->radius(), 0);
        theme->setClassnames(QStringLiteral("header"));
        theme->setClassnames(QString());
        theme->sendUpdate();
    }

    // The file theme was not touched, and the next assignment brings the global theme new data.
    QCOMPARE(a->radius(), 1);
    QVERIFY(QMetaObject::invokeMethod(&manager(), "updateGTheme"));
    QCOMPARE(Theme::global()->radius(), 1);
    QCOMPARE(Theme::global()->colors()->foreground(), QColor(10, 10, 10));
}

void tst_Lifetime::newItemsAfterANativeDeletion()
{
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    const auto engine = newEngine();
    const auto before = create(engine.get(), itemQml);
    QVERIFY(before);
    delete Theme::getObjectTheme(nullptr);
    deleteDeferred();
    const auto between = create(engine.get(), itemQml);
    QVERIFY(between);
    QCOMPARE(between->property("rounding").toInt(), 0);

    makeCurrent(QStringLiteral("b.thm"), coloredThemeText(uniqueTitle("B"), 2, "#0b0b0b"));
    const auto after = create(engine.get(), itemQml);
    QVERIFY(after);
    // Also the items that lost their data are back with the global theme.
    for (const QObject *item : { before.get(), between.get(), after.get() }) {
        QCOMPARE(item->property("rounding").toInt(), 2);
        QCOMPARE(item->property("fg").value<QColor>(), QColor(11, 11, 11));
    }
    makeCurrent(QStringLiteral("c.thm"), coloredThemeText(uniqueTitle("C"), 3, "#0c0c0c"));
    for (const QObject *item : { before.get(), between.get(), after.get() }) {
        QCOMPARE(item->property("rounding").toInt(), 3);
        QCOMPARE(item->property("fg").value<QColor>(), QColor(12, 12, 12));
    }
}

void tst_Lifetime::manyEngines()
{
    Theme *a = makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    Theme *b = makeCurrent(QStringLiteral("b.thm"), themeText(uniqueTitle("B"), 2));
    const int connections = followerCount();
    for (int i = 0; i < 10; ++i) {
        const auto engine = newEngine();
        const auto item = create(engine.get(), R"(
            import QtQuick 2.15
            import Tavolins 1.0
            Item { property int rounding: Theme.radius; property int row: ThemeManager.currentIndex }
        )");
        QVERIFY(item);
        manager().setCurrent(i % 2 ? a : b);
        QCOMPARE(item->property("rounding").toInt(), i % 2 ? 1 : 2);
        QCOMPARE(item->property("row").toInt(), manager().currentIndex());
    }
    deleteDeferred();
    QCOMPARE(followerCount(), connections);
}

TAVOLINS_TEST_MAIN(tst_Lifetime)
#include "tst_lifetime.moc"
