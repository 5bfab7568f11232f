#include "manager/thememanager.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QMetaProperty>
#include <QtGui/QPalette>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

#include <limits>
#include <memory>

namespace {

/// What sendUpdate() emits.
const QStringList update{ QStringLiteral("themeObjectChanged"), QStringLiteral("radiusChanged"),
                          QStringLiteral("needUpdate") };

QStringList prefixed(const QString &prefix, const QStringList &names)
{
    QStringList list;
    for (const QString &name : names)
        list.append(prefix + QLatin1Char('.') + name);
    return list;
}

/// Gives \a theme values that are not the defaults.
void fill(Theme &theme, int seed)
{
    theme.setTitle(QStringLiteral("Theme %1").arg(seed));
    theme.setFilename(QStringLiteral("/%1.thm").arg(seed));
    theme.setRadius(seed);
    theme.colors()->setForeground(QColor(seed, 1, 2));
    theme.fonts()->setMainFont(QFont(QStringLiteral("Main"), seed));
}

QColor defaultForeground()
{
    return QPalette().color(QPalette::WindowText);
}

/// A theme whose data has been deleted, as happens when native code deletes a theme that shared it.
std::unique_ptr<Theme> themeWithoutData()
{
    std::unique_ptr<Theme> theme(new Theme);
    fill(*theme, 9);
    dataOf(*theme)->classScopes.insert(QStringLiteral("a"),
                                       parsed(R"({"radius": 2, "own": "found"})"));
    dataOf(*theme)->styles.insert(QStringLiteral("Button"), QStringLiteral("file:///b.qml"));
    delete dataOf(*theme);
    return theme;
}

} // namespace

class tst_Theme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();

    void newThemeHasDataOfItsOwn();
    void newThemeFollowsItsData();
    void furtherThemesAreNotTheGlobalOne();
    void copySharesTheData();
    void copyEmitsNothing();
    void copyFollowsTheDataOnce();

    void assignmentTakesDataAndTitle();
    void assignmentEmitsInOrder();
    void assignmentReachesAllThatShareTheData();
    void assignmentToItself();
    void assignmentBetweenThemesOfOneData();
    void assignmentFromAHandlerStands();
    void hardCopyTakesOnlyTheData();
    void hardCopyOfNothing();

    void setTitle();
    void setFilename();
    void setRadius();
    void radiusIsShared();
    void fractionsDifferFromWholeRadii();
    void radiusIsCut_data();
    void radiusIsCut();
    void sendUpdateEmitsInOrder();
    void themeChangedMeansThisTheme();
    void writeDoesNothing();

    void globalBelongsToTheCatalogue();
    void objectThemesAreDistinct();
    void attachedThemeOfWhatHasNone();
    void attachedThemeOfAnItem();
    void attachedThemeLeavesWithItsItem();
    void attachedThemeWithoutAnItem();

    void destructorTakesTheDataAlong();
    void switchBeforeTheDataIsGone();
    void destructorReleasesTheOverloadedTheme();
    void themeDestroyedByAHandler_data();
    void themeDestroyedByAHandler();
    void deletedAttachedThemeTakesTheGlobalData();
    void globalThemeGetsDataFromTheNextSwitch();

    void withoutData_accessors();
    void withoutData_slots();
    void withoutData_classnames();
    void withoutData_copies();
    void withoutData_assignment();
    void withoutData_hardCopy();
    void withoutData_asSource();
    void withoutData_reading();
    void withoutData_defaultsAreEachThemesOwn();
};

void tst_Theme::initTestCase()
{
    QVERIFY(!Theme::g_theme);
    {
        Theme first;
        QCOMPARE(Theme::g_theme, &first);
        QCOMPARE(Theme::global(), &first);
        Theme second;
        QCOMPARE(Theme::g_theme, &first);
    }
    QVERIFY(!Theme::g_theme);
    {
        Theme first;
        Theme copy(first);
        QCOMPARE(Theme::g_theme, &first);
    }
    QVERIFY(Theme::global());
}

void tst_Theme::cleanup()
{
    // Tests may leave the global theme with other values, or without any.
    *Theme::global() = Theme();
    TestCase::cleanup();
}

void tst_Theme::newThemeHasDataOfItsOwn()
{
    QObject parent;
    Theme *theme = new Theme(&parent);
    QCOMPARE(theme->parent(), &parent);
    QCOMPARE(theme->title(), QString());
    QCOMPARE(theme->filename(), QString());
    QCOMPARE(theme->classnames(), QString());
    QCOMPARE(theme->radius(), 0);
    QCOMPARE(theme->colors()->foreground(), defaultForeground());
    QCOMPARE(theme->fonts()->mainFont(), QFont());
    QVERIFY(dataOf(*theme));
    QVERIFY(!dataOf(*theme)->parent());
    QCOMPARE(theme->fonts()->parent(), dataOf(*theme));
    QCOMPARE(theme->children(), QObjectList());
    const Theme other;
    QVERIFY(dataOf(other) != dataOf(*theme));
}

void tst_Theme::newThemeFollowsItsData()
{
    Theme theme;
    SignalRecorder recorder(&theme);
    Q_EMIT dataOf(theme)->updateTheme();
    QCOMPARE(recorder.take(), update);
}

void tst_Theme::furtherThemesAreNotTheGlobalOne()
{
    Theme *const global = Theme::g_theme;
    {
        const Theme theme;
        const Theme copy(theme);
        QVERIFY(&copy != Theme::g_theme);
        QCOMPARE(Theme::g_theme, global);
    }
    QCOMPARE(Theme::g_theme, global);
    QCOMPARE(Theme::global(), global);
}

void tst_Theme::copySharesTheData()
{
    QObject parent;
    Theme *theme = new Theme(&parent);
    fill(*theme, 7);
    dataOf(*theme)->classScopes.insert(QStringLiteral("a"), parsed(R"({"radius": 1})"));
    theme->setClassnames(QStringLiteral("a"));
    ThemePrivate *overloadedData = dataOf(*theme);
    const Theme copy(*theme);
    QVERIFY(!copy.parent());
    QCOMPARE(copy.title(), QStringLiteral("Theme 7"));
    QCOMPARE(copy.filename(), QString());
    QCOMPARE(copy.classnames(), QString());
    QVERIFY(dataOf(copy) != overloadedData);
    theme->setClassnames(QString());
    QCOMPARE(dataOf(copy), dataOf(*theme));
    QCOMPARE(copy.radius(), 7);
}

void tst_Theme::copyEmitsNothing()
{
    Theme theme;
    fill(theme, 7);
    SignalRecorder recorder(&theme);
    recorder.watch(dataOf(theme));
    const Theme copy(theme);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_Theme::copyFollowsTheDataOnce()
{
    Theme theme;
    Theme copy(theme);
    SignalRecorder recorder;
    recorder.watch(&theme, QStringLiteral("theme"));
    recorder.watch(&copy, QStringLiteral("copy"));
    Q_EMIT dataOf(theme)->updateTheme();
    QCOMPARE(recorder.take(),
             prefixed(QStringLiteral("theme"), update) + prefixed(QStringLiteral("copy"), update));
}

void tst_Theme::assignmentTakesDataAndTitle()
{
    Theme source;
    fill(source, 7);
    source.setClassnames(QStringLiteral("x"));
    Theme theme;
    theme.setFilename(QStringLiteral("/kept.thm"));
    theme.setClassnames(QStringLiteral("kept"));
    ThemePrivate *const data = dataOf(theme);
    QCOMPARE(&(theme = source), &theme);
    QCOMPARE(dataOf(theme), data);
    QVERIFY(dataOf(theme) != dataOf(source));
    QCOMPARE(theme.title(), QStringLiteral("Theme 7"));
    QCOMPARE(theme.filename(), QStringLiteral("/kept.thm"));
    QCOMPARE(theme.classnames(), QStringLiteral("kept"));
    QCOMPARE(theme.radius(), 7);
    QCOMPARE(theme.colors()->foreground(), QColor(7, 1, 2));
    QCOMPARE(theme.fonts()->mainFont(), QFont(QStringLiteral("Main"), 7));
}

void tst_Theme::assignmentEmitsInOrder()
{
    Theme source;
    fill(source, 7);
    Theme theme;
    theme.setTitle(QStringLiteral("Old"));
    QStringList titles;
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(theme.colors());
    recorder.watch(theme.fonts());
    recorder.watch(dataOf(theme));
    recorder.onSignal([&](const QString &signal) {
        if (signal == QLatin1String("needUpdate"))
            titles.append(theme.title());
    });
    theme = source;
    // No titleChanged, though the titles differ.
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("foregroundChanged"), QStringLiteral("mainFontChanged") })
                     + update + QStringList(QStringLiteral("updateTheme")) + update);
    // The title is taken between the two updates.
    QCOMPARE(titles, QStringList({ QStringLiteral("Old"), QStringLiteral("Theme 7") }));
}

void tst_Theme::assignmentReachesAllThatShareTheData()
{
    Theme source;
    fill(source, 7);
    Theme theme;
    Theme first(theme);
    Theme second(theme);
    SignalRecorder recorder;
    recorder.watch(&theme, QStringLiteral("theme"));
    recorder.watch(&first, QStringLiteral("first"));
    recorder.watch(&second, QStringLiteral("second"));
    recorder.watch(&source, QStringLiteral("source"));
    theme = source;
    QCOMPARE(recorder.take(),
             prefixed(QStringLiteral("theme"), update) + prefixed(QStringLiteral("first"), update)
                     + prefixed(QStringLiteral("second"), update)
                     + prefixed(QStringLiteral("theme"), update));
    QCOMPARE(first.colors()->foreground(), QColor(7, 1, 2));
    QCOMPARE(second.radius(), 7);
    QCOMPARE(first.title(), QString());
}

void tst_Theme::assignmentToItself()
{
    Theme theme;
    fill(theme, 7);
    SignalRecorder recorder(&theme);
    const Theme &same = theme;
    theme = same;
    QCOMPARE(recorder.take(), update + update);
    QCOMPARE(theme.radius(), 7);
    QCOMPARE(theme.title(), QStringLiteral("Theme 7"));
}

void tst_Theme::assignmentBetweenThemesOfOneData()
{
    Theme theme;
    fill(theme, 7);
    Theme copy(theme);
    copy.setTitle(QStringLiteral("Copy"));
    SignalRecorder recorder;
    recorder.watch(&theme, QStringLiteral("theme"));
    recorder.watch(&copy, QStringLiteral("copy"));
    theme = copy;
    QCOMPARE(recorder.take(),
             prefixed(QStringLiteral("theme"), update) + prefixed(QStringLiteral("copy"), update)
                     + prefixed(QStringLiteral("theme"), update));
    QCOMPARE(theme.title(), QStringLiteral("Copy"));
    QCOMPARE(dataOf(theme), dataOf(copy));
}

void tst_Theme::assignmentFromAHandlerStands()
{
    Theme first;
    fill(first, 7);
    Theme second;
    fill(second, 8);
    Theme theme;
    bool assigned = false;
    connect(&theme, &Theme::themeObjectChanged, &theme, [&] {
        if (!assigned) {
            assigned = true;
            theme = second;
        }
    });
    theme = first;
    QCOMPARE(theme.title(), QStringLiteral("Theme 8"));
    QCOMPARE(theme.radius(), 8);
    QCOMPARE(theme.colors()->foreground(), QColor(8, 1, 2));
}

void tst_Theme::hardCopyTakesOnlyTheData()
{
    Theme source;
    fill(source, 7);
    Theme theme;
    ThemePrivate *const data = dataOf(theme);
    SignalRecorder recorder(&theme);
    theme.hardCopy(&source);
    QCOMPARE(recorder.take(), update);
    QCOMPARE(dataOf(theme), data);
    QCOMPARE(theme.radius(), 7);
    QCOMPARE(theme.title(), QString());
    QCOMPARE(theme.filename(), QString());
}

void tst_Theme::hardCopyOfNothing()
{
    Theme theme;
    fill(theme, 7);
    SignalRecorder recorder(&theme);
    theme.hardCopy(nullptr);
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(theme.radius(), 7);
}

void tst_Theme::setTitle()
{
    Theme theme;
    Theme copy(theme);
    SignalRecorder recorder(&theme);
    SignalRecorder copyRecorder(&copy);
    theme.setTitle(QStringLiteral("A"));
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("titleChanged(A)")));
    theme.setTitle(QStringLiteral("A"));
    QCOMPARE(recorder.take(), QStringList());
    theme.setTitle(QStringLiteral("a"));
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("titleChanged(a)")));
    theme.setTitle(QString());
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("titleChanged()")));
    QCOMPARE(copyRecorder.take(), QStringList());
}

void tst_Theme::setFilename()
{
    Theme theme;
    SignalRecorder recorder(&theme);
    theme.setFilename(QStringLiteral("/a.thm"));
    theme.setFilename(QStringLiteral("/a.thm"));
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("filenameChanged")));
    QCOMPARE(theme.filename(), QStringLiteral("/a.thm"));
}

void tst_Theme::setRadius()
{
    Theme theme;
    SignalRecorder recorder(&theme);
    recorder.watch(dataOf(theme));
    theme.setRadius(0);
    QCOMPARE(recorder.take(), QStringList());
    theme.setRadius(3);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("radiusChanged")));
    theme.setRadius(3);
    QCOMPARE(recorder.take(), QStringList());
    theme.setRadius(-3);
    QCOMPARE(theme.radius(), -3);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("radiusChanged")));
    theme.setRadius(std::numeric_limits<int>::max());
    QCOMPARE(theme.radius(), std::numeric_limits<int>::max());
    theme.setRadius(std::numeric_limits<int>::min());
    QCOMPARE(theme.radius(), std::numeric_limits<int>::min());
}

void tst_Theme::radiusIsShared()
{
    const std::unique_ptr<Theme> attached(Theme::getObjectTheme(nullptr));
    const std::unique_ptr<Theme> other(Theme::getObjectTheme(nullptr));
    SignalRecorder recorder;
    recorder.watch(attached.get(), QStringLiteral("attached"));
    recorder.watch(other.get(), QStringLiteral("other"));
    recorder.watch(Theme::global(), QStringLiteral("global"));
    attached->setRadius(3);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("attached.radiusChanged")));
    QCOMPARE(attached->radius(), 3);
    QCOMPARE(other->radius(), 3);
    QCOMPARE(Theme::global()->radius(), 3);
}

void tst_Theme::fractionsDifferFromWholeRadii()
{
    Theme theme;
    dataOf(theme)->radius = 2.9;
    SignalRecorder recorder(&theme);
    theme.setRadius(2);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("radiusChanged")));
    QCOMPARE(dataOf(theme)->radius, 2.0);
}

void tst_Theme::radiusIsCut_data()
{
    QTest::addColumn<double>("radius");
    QTest::addColumn<int>("expected");

    typedef std::numeric_limits<int> Ints;
    typedef std::numeric_limits<double> Doubles;
    QTest::newRow("2.9") << 2.9 << 2;
    QTest::newRow("-2.9") << -2.9 << -2;
    QTest::newRow("0.99") << 0.99 << 0;
    QTest::newRow("-0.99") << -0.99 << 0;
    QTest::newRow("whole") << 4.0 << 4;
    QTest::newRow("huge") << 1e308 << Ints::max();
    QTest::newRow("negative and huge") << -1e308 << Ints::min();
    QTest::newRow("infinite") << Doubles::infinity() << Ints::max();
    QTest::newRow("no number") << Doubles::quiet_NaN() << 0;
}

void tst_Theme::radiusIsCut()
{
    QFETCH(double, radius);
    QFETCH(int, expected);

    Theme theme;
    dataOf(theme)->radius = radius;
    QCOMPARE(theme.radius(), expected);
}

void tst_Theme::sendUpdateEmitsInOrder()
{
    Theme theme;
    Theme copy(theme);
    SignalRecorder recorder(&theme);
    SignalRecorder copyRecorder(&copy);
    theme.sendUpdate();
    QCOMPARE(recorder.take(), update);
    QCOMPARE(copyRecorder.take(), QStringList());
}

void tst_Theme::themeChangedMeansThisTheme()
{
    Theme theme;
    Theme other;
    const auto themeChanged = [&theme](Theme *changed) {
        // The signal has this name as well.
        return QMetaObject::invokeMethod(&theme, "themeChanged", Q_ARG(Theme*, changed));
    };
    SignalRecorder recorder(&theme);
    QVERIFY(themeChanged(&other));
    QVERIFY(themeChanged(nullptr));
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(themeChanged(&theme));
    QCOMPARE(recorder.take(), update);
}

void tst_Theme::writeDoesNothing()
{
    Theme theme;
    fill(theme, 7);
    const QJsonObject before = parsed(R"({"title": "Kept", "other": 1})");
    QJsonObject document = before;
    theme.write(document);
    QCOMPARE(document, before);
}

void tst_Theme::globalBelongsToTheCatalogue()
{
    QCOMPARE(Theme::global(), Theme::g_theme);
    QCOMPARE(Theme::global()->parent(), ThemeManager::getInstance());
    QCOMPARE(Theme::global(), Theme::global());
}

void tst_Theme::objectThemesAreDistinct()
{
    QObject item;
    const std::unique_ptr<Theme> first(Theme::getObjectTheme(&item));
    const std::unique_ptr<Theme> second(Theme::getObjectTheme(&item));
    QVERIFY(first != second);
    QCOMPARE(dataOf(*first), dataOf(*second));
    QCOMPARE(dataOf(*first), dataOf(*Theme::global()));
    QVERIFY(!first->parent());
    QVERIFY(!Theme::attachedTheme(&item));
    // Their destructors would take the global theme's data along.
    QCOMPARE(item.children(), QObjectList());
}

void tst_Theme::attachedThemeOfWhatHasNone()
{
    QObject item;
    QVERIFY(!Theme::attachedTheme(nullptr));
    QVERIFY(!Theme::attachedTheme(&item));
}

void tst_Theme::attachedThemeOfAnItem()
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.2\nimport " TAVOLINS_QML_URI " 1.0\n"
                      "QtObject {\n"
                      "    property QtObject used: QtObject { Theme.classnames: \"header\" }\n"
                      "    property QtObject unused: QtObject { }\n"
                      "}",
                      QUrl());
    const std::unique_ptr<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));
    QObject *used = root->property("used").value<QObject *>();
    QObject *unused = root->property("unused").value<QObject *>();
    Theme *attached = Theme::attachedTheme(used);
    QVERIFY(attached);
    QCOMPARE(attached->classnames(), QStringLiteral("header"));
    QCOMPARE(dataOf(*attached), dataOf(*Theme::global()));
    QCOMPARE(Theme::attachedTheme(used), attached);
    // Asking does not create one.
    QVERIFY(!Theme::attachedTheme(unused));
    QVERIFY(!Theme::attachedTheme(unused));
}

void tst_Theme::attachedThemeLeavesWithItsItem()
{
    const QPointer<ThemePrivate> data = dataOf(*Theme::global());
    Theme survivor(*Theme::global());
    Theme::global()->setRadius(5);

    QObject *item = new QObject;
    const QPointer<Theme> attached = Theme::qmlAttachedProperties(item);
    QVERIFY(!attached->parent());
    QCOMPARE(dataOf(*attached), data.data());
    delete item;
    // At once: QML would go on evaluating what is bound to it, in the name of an item that is gone.
    QVERIFY(!attached);
    Q_EMIT data->updateTheme();
    deleteDeferred();
    QVERIFY(data);
    QCOMPARE(dataOf(*Theme::global()), data.data());
    QCOMPARE(survivor.radius(), 5);
}

void tst_Theme::attachedThemeWithoutAnItem()
{
    // Earlier tests may have taken the global theme's data away.
    *Theme::global() = Theme();
    const std::unique_ptr<Theme> attached(Theme::qmlAttachedProperties(nullptr));
    QVERIFY(attached);
    QCOMPARE(dataOf(*attached), dataOf(*Theme::global()));
}

void tst_Theme::destructorTakesTheDataAlong()
{
    std::unique_ptr<Theme> theme(new Theme);
    fill(*theme, 7);
    Theme sharer(*theme);
    const QPointer<ThemePrivate> data = dataOf(*theme);
    theme.reset();
    // A running signal may still use the data.
    QVERIFY(data);
    QCOMPARE(sharer.radius(), 7);
    deleteDeferred();
    QVERIFY(!data);
    QCOMPARE(sharer.radius(), 0);
    QCOMPARE(sharer.colors()->foreground(), defaultForeground());
    QCOMPARE(sharer.fonts()->mainFont(), QFont());
    QCOMPARE(sharer.title(), QStringLiteral("Theme 7"));
}

void tst_Theme::switchBeforeTheDataIsGone()
{
    // Somebody deletes an item's theme, and the global theme is assigned to before the event loop
    // has come to delete the data that goes with it.
    *Theme::global() = Theme();
    QObject item;
    Theme *survivor = Theme::qmlAttachedProperties(&item);
    delete Theme::getObjectTheme(nullptr);
    Theme next;
    fill(next, 5);
    *Theme::global() = next;
    QCOMPARE(survivor->radius(), 5);
    deleteDeferred();
    QCOMPARE(survivor->radius(), 5);
    QCOMPARE(Theme::global()->radius(), 5);
    QCOMPARE(dataOf(*survivor), dataOf(*Theme::global()));
    SignalRecorder recorder(survivor);
    Q_EMIT dataOf(*survivor)->updateTheme();
    QCOMPARE(recorder.take(), update);
}

void tst_Theme::destructorReleasesTheOverloadedTheme()
{
    std::unique_ptr<Theme> theme(new Theme);
    dataOf(*theme)->classScopes.insert(QStringLiteral("a"), parsed(R"({"radius": 1})"));
    theme->setClassnames(QStringLiteral("a"));
    const QPointer<Theme> overloaded = theme->findChild<Theme *>();
    const QPointer<ThemePrivate> overloadedData = dataOf(*theme);
    QVERIFY(overloaded);
    QVERIFY(overloadedData);
    theme.reset();
    QVERIFY(!overloaded);
    deleteDeferred();
    QVERIFY(!overloadedData);
}

void tst_Theme::themeDestroyedByAHandler_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<QString>("signal");

    // In the order of the operations below.
    int operation = 0;
    for (const char *name : { "sendUpdate", "assignment", "hardCopy" }) {
        for (const QString &signal : update)
            QTest::addRow("%s, %s", name, qPrintable(signal)) << operation << signal;
        ++operation;
    }
    QTest::newRow("setClassnames, themeObjectChanged") << 3 << update.first();
}

void tst_Theme::themeDestroyedByAHandler()
{
    QFETCH(int, operation);
    QFETCH(QString, signal);

    Theme source;
    fill(source, 7);
    const QPointer<Theme> theme(new Theme);
    SignalRecorder recorder(theme);
    recorder.onSignal([&](const QString &name) {
        if (name == signal)
            delete theme;
    });
    switch (operation) {
    case 0:
        theme->sendUpdate();
        break;
    case 1:
        *theme = source;
        break;
    case 2:
        theme->hardCopy(&source);
        break;
    default:
        theme->setClassnames(QStringLiteral("a"));
    }
    QVERIFY(!theme);
    QCOMPARE(recorder.take(), update.mid(0, update.indexOf(signal) + 1));
}

void tst_Theme::deletedAttachedThemeTakesTheGlobalData()
{
    Theme source;
    fill(source, 7);
    *Theme::global() = source;
    Theme *attached = Theme::getObjectTheme(nullptr);
    Theme survivor(*Theme::global());
    const QPointer<ThemePrivate> data = dataOf(*attached);
    delete attached;
    deleteDeferred();
    QVERIFY(!data);
    QCOMPARE(Theme::global()->radius(), 0);
    QCOMPARE(Theme::global()->colors()->foreground(), defaultForeground());
    QCOMPARE(survivor.colors()->foreground(), defaultForeground());
    // Items that come now show the defaults as well.
    const std::unique_ptr<Theme> late(Theme::getObjectTheme(nullptr));
    QCOMPARE(late->colors()->foreground(), defaultForeground());
    QCOMPARE(late->title(), QStringLiteral("Theme 7"));
}

void tst_Theme::globalThemeGetsDataFromTheNextSwitch()
{
    ThemeManager *manager = ThemeManager::getInstance();
    Theme first;
    fill(first, 7);
    Theme second;
    fill(second, 8);
    manager->setCurrent(&first);
    QCOMPARE(Theme::global()->radius(), 7);
    delete Theme::getObjectTheme(nullptr);
    deleteDeferred();
    QCOMPARE(Theme::global()->radius(), 0);

    SignalRecorder recorder(Theme::global());
    manager->setCurrent(&second);
    QCOMPARE(recorder.take(), update + update);
    QCOMPARE(Theme::global()->radius(), 8);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QCOMPARE(attached->radius(), 8);
    QCOMPARE(attached->colors()->foreground(), QColor(8, 1, 2));
    // The new item follows the switch after that.
    manager->setCurrent(&first);
    QCOMPARE(attached->radius(), 7);
}

void tst_Theme::withoutData_accessors()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    QCOMPARE(theme->title(), QStringLiteral("Theme 9"));
    QCOMPARE(theme->filename(), QStringLiteral("/9.thm"));
    QCOMPARE(theme->classnames(), QString());
    QCOMPARE(theme->radius(), 0);
    const Theme defaults;
    for (int i = ThemeObjectColors::staticMetaObject.propertyOffset();
         i < ThemeObjectColors::staticMetaObject.propertyCount(); ++i) {
        const QMetaProperty property = ThemeObjectColors::staticMetaObject.property(i);
        QCOMPARE(property.read(theme->colors()), property.read(defaults.colors()));
    }
    for (int i = ThemeObjectFonts::staticMetaObject.propertyOffset();
         i < ThemeObjectFonts::staticMetaObject.propertyCount(); ++i) {
        const QMetaProperty property = ThemeObjectFonts::staticMetaObject.property(i);
        QCOMPARE(property.read(theme->fonts()), property.read(defaults.fonts()));
    }
}

void tst_Theme::withoutData_slots()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    SignalRecorder recorder(theme.get());
    theme->setRadius(4);
    QCOMPARE(theme->radius(), 0);
    QCOMPARE(recorder.take(), QStringList());
    theme->sendUpdate();
    QCOMPARE(recorder.take(), update);
    QMetaObject::invokeMethod(theme.get(), "themeChanged", Q_ARG(Theme*, theme.get()));
    QCOMPARE(recorder.take(), update);
    theme->setTitle(QStringLiteral("New"));
    theme->setFilename(QStringLiteral("/new.thm"));
    QCOMPARE(recorder.take(),
             QStringList(
                     { QStringLiteral("titleChanged(New)"), QStringLiteral("filenameChanged") }));
    QCOMPARE(theme->getStyle(QStringLiteral("Button")), QString());
    QCOMPARE(theme->getStyle(QStringLiteral("Button"), QStringLiteral("a")), QString());
    QCOMPARE(theme->complementaryColor(Qt::white), QColor(Qt::black));
    QCOMPARE(theme->complementaryColor(Qt::transparent),
             Theme().complementaryColor(Qt::transparent));
    QJsonObject document;
    theme->write(document);
    QVERIFY(document.isEmpty());
}

void tst_Theme::withoutData_classnames()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    SignalRecorder recorder(theme.get());
    theme->setClassnames(QStringLiteral("a b"));
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("themeObjectChanged"),
                           QStringLiteral("classnamesChanged") }));
    QCOMPARE(theme->classnames(), QStringLiteral("a b"));
    QVERIFY(theme->hasClassname(QStringLiteral("b")));
    QVERIFY(!theme->hasClassname(QStringLiteral("c")));
    QCOMPARE(theme->getClassValue(QStringLiteral("own"), 12).toInt(), 12);
    QCOMPARE(theme->findChildren<Theme *>().size(), 0);
}

void tst_Theme::withoutData_copies()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    Theme copy(*theme);
    QCOMPARE(copy.title(), QStringLiteral("Theme 9"));
    QCOMPARE(copy.radius(), 0);
    QCOMPARE(copy.colors()->foreground(), defaultForeground());
    // The copy does not follow when the theme gets data.
    Theme source;
    fill(source, 7);
    *theme = source;
    QCOMPARE(copy.radius(), 0);
}

void tst_Theme::withoutData_assignment()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    Theme source;
    fill(source, 7);
    SignalRecorder recorder(theme.get());
    *theme = source;
    QCOMPARE(recorder.take(), update + update);
    QCOMPARE(theme->radius(), 7);
    QCOMPARE(theme->title(), QStringLiteral("Theme 7"));
    QVERIFY(dataOf(*theme) != dataOf(source));
    recorder.take();
    Q_EMIT dataOf(*theme)->updateTheme();
    QCOMPARE(recorder.take(), update);
}

void tst_Theme::withoutData_hardCopy()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    Theme source;
    fill(source, 7);
    SignalRecorder recorder(theme.get());
    theme->hardCopy(nullptr);
    QCOMPARE(recorder.take(), QStringList());
    theme->hardCopy(&source);
    QCOMPARE(recorder.take(), update);
    QCOMPARE(theme->radius(), 7);
    QCOMPARE(theme->title(), QStringLiteral("Theme 9"));
}

void tst_Theme::withoutData_asSource()
{
    const std::unique_ptr<Theme> source = themeWithoutData();
    Theme theme;
    fill(theme, 7);
    SignalRecorder recorder(&theme);
    theme.hardCopy(source.get());
    QCOMPARE(recorder.take(), QStringList());
    theme = *source;
    QCOMPARE(recorder.take(), update);
    QCOMPARE(theme.title(), QStringLiteral("Theme 9"));
    QCOMPARE(theme.radius(), 7);
    QCOMPARE(theme.colors()->foreground(), QColor(7, 1, 2));
}

void tst_Theme::withoutData_reading()
{
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "Read", "header": {"own": 3}})");
    std::unique_ptr<Theme> theme = themeWithoutData();
    QCOMPARE(theme->load(path), 0);
    theme->setClassnames(QStringLiteral("header"));
    QCOMPARE(theme->getClassValue(QStringLiteral("own"), 0).toInt(), 3);

    theme = themeWithoutData();
    theme->read(parsed(R"({"global": {"radius": 4}})"), true);
    QCOMPARE(theme->radius(), 4);

    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    theme = themeWithoutData();
    theme->setFilename(path);
    theme->loadThemeQmlStyles();
    QVERIFY(!theme->getStyle(QStringLiteral("Card")).isEmpty());
}

void tst_Theme::withoutData_defaultsAreEachThemesOwn()
{
    const std::unique_ptr<Theme> theme = themeWithoutData();
    const std::unique_ptr<Theme> other = themeWithoutData();
    theme->colors()->setForeground(QColor(1, 2, 3));
    theme->loadThemeScope(theme.get(), parsed(R"({"colors": {"background": "red"}})"), true);
    QCOMPARE(other->colors()->foreground(), defaultForeground());
    QCOMPARE(other->colors()->background(), QPalette().color(QPalette::Window));
}

TAVOLINS_TEST_MAIN(tst_Theme)
#include "tst_theme.moc"
