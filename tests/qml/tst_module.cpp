#include "manager/thememanager.h"
#include "plugin/tavolinsplugin.h"
#include "qml/qmltestcase.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtQml/QQmlEngine>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

/// The module as engines find it: which identifier it gets is theirs to say.
class tst_Module : public QmlTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void identifiers_data();
    void identifiers();
    void twoIdentifiersInOneEngine();
    void qualifiedImport();
    void versions_data();
    void versions();
    void unknownNames_data();
    void unknownNames();
    void themeCannotBeInstantiated_data();
    void themeCannotBeInstantiated();
    void managerCannotBeInstantiated();
    void enginesShareTheManager();
    void managerOutlivesEngines();
    void nativeCodeSeesTheSameCatalogue();

private:
    void expectSharedSingleton();
};

/// Qt 5 gives a singleton object a context of the engine that asks for it, and remarks that it has
/// one already when another engine, or another name in the same one, got the object before. It
/// takes the first one, as it should.
void tst_Module::expectSharedSingleton()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    expectLog(
            QStringLiteral("QQmlEngine::setContextForObject(): Object already has a QQmlContext"));
#endif
}

void tst_Module::initTestCase()
{
    ThemeManager::getInstance();
}

void tst_Module::cleanup()
{
    park();
    TestCase::cleanup();
}

void tst_Module::identifiers_data()
{
    QTest::addColumn<QString>("uri");

    QTest::newRow("one word") << QStringLiteral("Tavolins");
    QTest::newRow("dots") << QStringLiteral("Acme.Ui.Theming");
    QTest::newRow("a third one") << QStringLiteral("Third");
    QTest::newRow("digits and underscores") << QStringLiteral("My_App2.Themes_3");
}

void tst_Module::identifiers()
{
    QFETCH(const QString, uri);

    addModule(uri);
    makeCurrent(QStringLiteral("a.thm"), coloredThemeText(uniqueTitle("A"), 7, "#112233"));
    const auto engine = newEngine();
    const auto object = create(engine.get(), "import QtQuick 2.15\nimport " + uri.toUtf8() + R"( 1.0
        QtObject {
            property int radius: Theme.radius
            property color foreground: Theme.colors.foreground
            property var manager: ThemeManager
        })");
    QVERIFY(object);
    QCOMPARE(object->property("radius").toInt(), 7);
    QCOMPARE(object->property("foreground").value<QColor>(), QColor(0x11, 0x22, 0x33));
    QCOMPARE(object->property("manager").value<QObject *>(), ThemeManager::getInstance());
    QVERIFY(Theme::attachedTheme(object.get()));
}

void tst_Module::twoIdentifiersInOneEngine()
{
    expectSharedSingleton();
    addModule(QStringLiteral("Tavolins"));
    addModule(QStringLiteral("Acme.Ui.Theming"));
    Theme *theme = makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 7));
    const auto engine = newEngine();
    const auto object = create(engine.get(), R"(
        import QtQml 2.15
        import Tavolins 1.0 as One
        import Acme.Ui.Theming 1.0 as Two
        QtObject {
            property int first: One.Theme.radius
            property int second: Two.Theme.radius
            property bool same: One.ThemeManager === Two.ThemeManager
            Component.onCompleted: Two.Theme.classnames = "shared"
            property string names: One.Theme.classnames
        })");
    QVERIFY(object);
    QCOMPARE(object->property("first").toInt(), 7);
    QCOMPARE(object->property("second").toInt(), 7);
    QVERIFY(object->property("same").toBool());
    // Both names stand for one type, so the item has one attached theme.
    QCOMPARE(object->property("names").toString(), QStringLiteral("shared"));
    theme->setRadius(8);
    theme->sendUpdate();
    QCOMPARE(object->property("first").toInt(), 8);
    QCOMPARE(object->property("second").toInt(), 8);
}

void tst_Module::qualifiedImport()
{
    addModule(QStringLiteral("Tavolins"));
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 6));
    const auto engine = newEngine();
    const auto object = create(engine.get(), R"(
        import QtQml 2.15
        import Tavolins 1.0 as T
        QtObject {
            property int radius: T.Theme.radius
            property int row: T.ThemeManager.currentIndex
            T.Theme.classnames: "a b"
            property bool has: T.Theme.hasClassname("b")
        })");
    QVERIFY(object);
    QCOMPARE(object->property("radius").toInt(), 6);
    QCOMPARE(object->property("row").toInt(), ThemeManager::getInstance()->currentIndex());
    QCOMPARE(Theme::attachedTheme(object.get())->classnames(), QStringLiteral("a b"));
}

void tst_Module::versions_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<bool>("exists");

    QTest::newRow("1.0") << QByteArray("1.0") << true;
    QTest::newRow("1.1") << QByteArray("1.1") << false;
    QTest::newRow("0.9") << QByteArray("0.9") << false;
    QTest::newRow("2.0") << QByteArray("2.0") << false;
}

void tst_Module::versions()
{
    QFETCH(const QByteArray, version);
    QFETCH(const bool, exists);

    addModule(QStringLiteral("Tavolins"));
    const auto engine = newEngine();
    QCOMPARE(errorsOf(engine.get(),
                      "import QtQml 2.15\nimport Tavolins " + version
                              + "\nQtObject { property int r: Theme.radius }"),
             exists ? QString()
                    : QStringLiteral("module \"Tavolins\" version %1 is not installed")
                              .arg(QString::fromLatin1(version)));
}

void tst_Module::unknownNames_data()
{
    QTest::addColumn<QByteArray>("name");

    for (const char *name : { "ThemePrivate", "ThemeObject", "ThemeObjectColors",
                              "ThemeObjectFonts", "TavolinsPlugin" }) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void tst_Module::unknownNames()
{
    QFETCH(const QByteArray, name);

    addModule(QStringLiteral("Tavolins"));
    const auto engine = newEngine();
    QCOMPARE(errorsOf(engine.get(), "import Tavolins 1.0\n" + name + " {}"),
             QString::fromLatin1(name) + QLatin1String(" is not a type"));
}

void tst_Module::themeCannotBeInstantiated_data()
{
    QTest::addColumn<QByteArray>("qml");

    QTest::newRow("as the root") << QByteArray("Theme {}");
    QTest::newRow("as a member") << QByteArray("QtObject { property QtObject t: Theme {} }");
    QTest::newRow("in a component")
            << QByteArray("QtObject { property Component c: Component { Theme {} } }");
}

void tst_Module::themeCannotBeInstantiated()
{
    QFETCH(const QByteArray, qml);

    addModule(QStringLiteral("Tavolins"));
    addModule(QStringLiteral("Acme.Ui.Theming"));
    for (const char *uri : { "Tavolins", "Acme.Ui.Theming" }) {
        const auto engine = newEngine();
        QCOMPARE(errorsOf(engine.get(),
                          QByteArray("import QtQml 2.15\nimport ") + uri + " 1.0\n" + qml),
                 QStringLiteral("Theme is an attached property"));
    }
}

void tst_Module::managerCannotBeInstantiated()
{
    addModule(QStringLiteral("Tavolins"));
    const auto engine = newEngine();
    QVERIFY(!errorsOf(engine.get(), "import Tavolins 1.0\nThemeManager {}").isEmpty());
}

void tst_Module::enginesShareTheManager()
{
    expectSharedSingleton();
    addModule(QStringLiteral("Tavolins"));
    addModule(QStringLiteral("Third"));
    const auto first = newEngine();
    const auto second = newEngine();
    const auto one = create(first.get(), R"(
        import QtQml 2.15
        import Tavolins 1.0
        QtObject { property var manager: ThemeManager; property int changes: 0
                   property Connections c: Connections { target: ThemeManager
                       function onCurrentChanged() { ++changes } } })");
    const auto two = create(second.get(), R"(
        import QtQml 2.15
        import Third 1.0
        QtObject { property var manager: ThemeManager })");
    QVERIFY(one && two);
    QCOMPARE(one->property("manager").value<QObject *>(), ThemeManager::getInstance());
    QCOMPARE(two->property("manager").value<QObject *>(), ThemeManager::getInstance());
    // A switch through the one is seen through the other.
    makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 1));
    QCOMPARE(one->property("changes").toInt(), 1);
}

void tst_Module::managerOutlivesEngines()
{
    expectSharedSingleton();
    addModule(QStringLiteral("Tavolins"));
    const QByteArray qml = R"(
        import QtQml 2.15
        import Tavolins 1.0
        QtObject {
            property int radius: Theme.radius
            property string title: ThemeManager.current.title
            property int row: ThemeManager.currentIndex
            property var manager: ThemeManager
            function load(path, title) { ThemeManager.loadThemes(path, title) }
        })";
    const QPointer<ThemeManager> manager(ThemeManager::getInstance());
    const QPointer<Theme> global(Theme::global());
    const QString a = uniqueTitle("A");
    const QString b = uniqueTitle("B");
    const QString c = uniqueTitle("C");
    write(QStringLiteral("one/a.thm"), themeText(a, 11));
    write(QStringLiteral("two/b.thm"), themeText(b, 12));
    write(QStringLiteral("two/c.thm"), themeText(c, 13));
    const auto load = [&](QObject *object, const char *name, const QString &title) {
        return QMetaObject::invokeMethod(
                object, "load",
                Q_ARG(QVariant, folder() + QLatin1Char('/') + QLatin1String(name)), Q_ARG(QVariant, title));
    };

    auto firstEngine = newEngine();
    auto first = create(firstEngine.get(), qml);
    const auto secondEngine = newEngine();
    const auto second = create(secondEngine.get(), qml);
    QVERIFY(first && second);
    QVERIFY(load(first.get(), "one", a));
    QCOMPARE(first->property("radius").toInt(), 11);
    QCOMPARE(second->property("radius").toInt(), 11);
    const QPointer<Theme> loaded(manager->current());

    first.reset();
    firstEngine->collectGarbage();
    firstEngine.reset();
    deleteDeferred();
    QVERIFY(manager);
    QVERIFY(global);
    QVERIFY(loaded);
    QCOMPARE(ThemeManager::getInstance(), manager.data());

    // Load, switch and read through the second engine, and through one that is new.
    const int row = manager->rowCount();
    QVERIFY(load(second.get(), "two", b));
    QCOMPARE(second->property("radius").toInt(), 12);
    QCOMPARE(second->property("title").toString(), b);
    QCOMPARE(second->property("row").toInt(), row);
    const auto thirdEngine = newEngine();
    const auto third = create(thirdEngine.get(), qml);
    QVERIFY(third);
    QCOMPARE(third->property("manager").value<QObject *>(), manager.data());
    QCOMPARE(third->property("radius").toInt(), 12);
    QVERIFY(load(third.get(), "nowhere", c));
    for (const QObject *object : { second.get(), third.get() }) {
        QCOMPARE(object->property("radius").toInt(), 13);
        QCOMPARE(object->property("title").toString(), c);
        QCOMPARE(object->property("row").toInt(), row + 1);
    }
}

void tst_Module::nativeCodeSeesTheSameCatalogue()
{
    addModule(QStringLiteral("Tavolins"));
    const auto engine = newEngine();
    const auto object = create(engine.get(), R"(
        import QtQml 2.15
        import Tavolins 1.0
        QtObject {
            property int radius: Theme.radius
            property bool isCurrent: nativeTheme === ThemeManager.current
            property QtObject nativeTheme: null
        })");
    QVERIFY(object);
    Theme *theme = makeCurrent(QStringLiteral("a.thm"), themeText(uniqueTitle("A"), 17));
    object->setProperty("nativeTheme", QVariant::fromValue<QObject *>(theme));
    QVERIFY(object->property("isCurrent").toBool());
    QCOMPARE(object->property("radius").toInt(), 17);
    QVERIFY(object->metaObject() != &Theme::staticMetaObject);
    QCOMPARE(Theme::attachedTheme(object.get())->metaObject(), &Theme::staticMetaObject);
}

TAVOLINS_TEST_MAIN(tst_Module)
#include "tst_module.moc"
