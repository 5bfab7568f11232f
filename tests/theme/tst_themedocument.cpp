#include "manager/thememanager.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMetaProperty>
#include <QtGui/QPalette>
#include <QtTest/QtTest>

#include <sys/stat.h>

#include <limits>
#include <memory>

namespace {

const QString update = QStringLiteral("themeObjectChanged radiusChanged needUpdate");

/// What a theme holds that reading may change.
struct Snapshot
{
    explicit Snapshot(const Theme &theme)
        : data(*dataOf(theme))
        , mainFont(theme.fonts()->mainFont())
        , h1Font(theme.fonts()->h1Font())
    {
    }

    bool sameColorsFontsAndRadius(const Snapshot &other) const
    {
        for (int i = ThemeObjectColors::staticMetaObject.propertyOffset();
             i < ThemeObjectColors::staticMetaObject.propertyCount(); ++i) {
            const QMetaProperty property = ThemeObjectColors::staticMetaObject.property(i);
            if (property.read(&data.colors) != property.read(&other.data.colors))
                return false;
        }
        return mainFont == other.mainFont && h1Font == other.h1Font
                && qFuzzyCompare(data.radius + 1000, other.data.radius + 1000);
    }

    bool sameScopes(const Snapshot &other) const
    {
        return data.classScopes == other.data.classScopes && data.styles == other.data.styles;
    }

    // A copy of the data leaves out the fonts.
    ThemePrivate data;
    QFont mainFont;
    QFont h1Font;
};

void fill(Theme &theme, const QString &title)
{
    theme.setTitle(title);
    theme.setRadius(8);
    theme.colors()->setForeground(QColor(10, 20, 30));
    theme.colors()->setBackground(QColor(40, 50, 60));
    theme.fonts()->setMainFont(QFont(QStringLiteral("Own"), 31));
    theme.fonts()->setH1Font(QFont(QStringLiteral("Own"), 51));
    dataOf(theme)->classScopes.insert(QStringLiteral("own"), parsed(R"({"k": "own"})"));
    dataOf(theme)->classScopes.insert(QStringLiteral("both"), parsed(R"({"k": "old"})"));
    dataOf(theme)->styles.insert(QStringLiteral("Own"), QStringLiteral("file:///own.qml"));
}

QString joined(const QStringList &names)
{
    return names.join(QLatin1Char(' '));
}

QString title(const char *text)
{
    return QString::fromUtf8(text);
}

QStringList classNames(const Theme &theme)
{
    QStringList names = dataOf(theme)->classScopes.keys();
    names.sort();
    return names;
}

} // namespace

class tst_ThemeDocument : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void targetDestroyedByItsScope_data();
    void targetDestroyedByItsScope();
    void initTestCase();

    void applied_data();
    void applied();
    void emittedSignals_data();
    void emittedSignals();
    void groupsAnnounceOnceInTheirOrder();
    void onlyTitleLeavesTheValues();
    void titles_data();
    void titles();
    void globalAppliesOverTheDefaults();
    void globalDerivesMissingShades();
    void globalRadius_data();
    void globalRadius();
    void emptyGlobalChangesNothing();
    void temporaryIsReleasedLater();
    void classScopes_data();
    void classScopes();
    void classScopesAreNeverRemoved();
    void readWithoutHeader();
    void readEmptyDocument();

    void loadSetsTheFileName();
    void reloadReadsAgain();
    void stylesAreThereWhenTheUpdateIsSent();

    void loadThemeScopeOfNothing();
    void loadThemeScopeCreatesATheme();
    void loadThemeScopeIntoATarget();
    void loadThemeScopeRadius_data();
    void loadThemeScopeRadius();
    void loadThemeScopeLeavesTheScopeAlone();

    void extendsTakesTheData();
    void extendsWithGlobalTakesScopesAndStyles();
    void extendsIsCopied();
    void extendsChains();
    void extendsUnknown_data();
    void extendsUnknown();
    void extendsNothing_data();
    void extendsNothing();
    void extendsItself();
    void extendsAThemeWithoutData();
    void extendsTheFirstOfThatTitle();
    void retriedAfterTheParentCame();
    void loadedFolder();

    void unopenable_data();
    void unopenable();
    void emptyFile();
    void pipesAndDevices_data();
    void pipesAndDevices();
    void strangeFiles_data();
    void strangeFiles();
    void wrongTypes_data();
    void wrongTypes();
    void readableOddities_data();
    void readableOddities();

    void destroyedByAHandler_data();
    void destroyedByAHandler();
    void readAgainByAHandler();
};

void tst_ThemeDocument::initTestCase()
{
    ThemeManager::getInstance();
}

void tst_ThemeDocument::applied_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<bool>("keepsValues");
    QTest::addColumn<QStringList>("classes");

    const auto row = [](const char *name, const char *document, bool keepsValues,
                        const QStringList &classes) {
        QTest::newRow(name) << QByteArray(document) << keepsValues << classes;
    };
    const QStringList former{ QStringLiteral("both"), QStringLiteral("own") };
    const QStringList withHeader{ QStringLiteral("both"), QStringLiteral("header"),
                                  QStringLiteral("own") };
    row("empty object", "{}", true, former);
    row("only title", R"({"title": "T"})", true, former);
    row("only a class", R"({"header": {"radius": 1}})", true, withHeader);
    row("global", R"({"global": {"radius": 1}})", false, former);
    row("global with unknown members alone", R"({"global": {"own": 1}})", false, former);
    row("empty global and a class", R"({"global": {}, "header": {}})", true, withHeader);
    row("all", R"({"title": "T", "global": {"colors": {"selection": "red"}}, "header": {}})", false,
        withHeader);
}

void tst_ThemeDocument::applied()
{
    QFETCH(QByteArray, document);
    QFETCH(bool, keepsValues);
    QFETCH(QStringList, classes);

    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), document)), 0);
    QCOMPARE(Snapshot(theme).sameColorsFontsAndRadius(before), keepsValues);
    QCOMPARE(classNames(theme), classes);
    QCOMPARE(dataOf(theme)->styles, before.data.styles);
}

void tst_ThemeDocument::emittedSignals_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *document, const QString &expected) {
        QTest::newRow(name) << QByteArray(document)
                            << QStringLiteral("filenameChanged ") + expected;
    };
    const QString titled = QStringLiteral("titleChanged(T) ");
    const QString updates = QStringLiteral("%1 updateTheme ").arg(update);
    row("only title", R"({"title": "T"})", titled + update);
    row("title that the theme has", R"({"title": "Before"})", update);
    row("empty object", "{}", QStringLiteral("titleChanged() ") + update);
    row("no JSON", "no JSON", QStringLiteral("titleChanged() ") + update);
    row("global", R"({"title": "T", "global": {"radius": 1}})", titled + updates + update);
    row("empty global", R"({"title": "T", "global": {}})", titled + update);
    row("classes", R"({"title": "T", "header": {"radius": 1}, "muted": {}})", titled + update);
    row("extends", R"({"title": "T", "extends": "Signals' parent"})", updates + titled + update);
    row("extends and global",
        R"({"title": "T", "extends": "Signals' parent", "global": {"radius": 1}})",
        updates + titled + updates + update);
}

void tst_ThemeDocument::emittedSignals()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, expected);

    Theme parent;
    parent.setTitle(QStringLiteral("Signals' parent"));
    ThemeManager::getInstance()->addTheme(&parent);
    Theme theme;
    theme.setTitle(QStringLiteral("Before"));
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), document)), 0);
    QCOMPARE(joined(recorder.take()), expected);
}

void tst_ThemeDocument::groupsAnnounceOnceInTheirOrder()
{
    Theme theme;
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(theme.colors());
    recorder.watch(theme.fonts());
    const QString path = write(QStringLiteral("a.thm"), R"({"global": {
            "fonts": {"main": {"pointSize": 44}}, "radius": 3,
            "colors": {"selection": "#010203", "foreground": "#405060"}}})");
    QCOMPARE(theme.load(path), 0);
    QStringList expected{ QStringLiteral("filenameChanged"), QStringLiteral("foregroundChanged"),
                          QStringLiteral("lighterForegroundChanged"),
                          QStringLiteral("darkerForegroundChanged") };
    // The default background gets shades by the documents' factor, where that makes a difference.
    const QColor background = QPalette().color(QPalette::Window);
    if (background.lighter(150) != QColor(background.lighter(200).name()))
        expected.append(QStringLiteral("lighterBackgroundChanged"));
    if (background.darker(200) != QColor(background.darker(200).name()))
        expected.append(QStringLiteral("darkerBackgroundChanged"));
    expected += { QStringLiteral("selectionChanged"),     QStringLiteral("mainFontChanged"),
                  QStringLiteral("alternateFontChanged"), QStringLiteral("h1FontChanged"),
                  QStringLiteral("h2FontChanged"),        QStringLiteral("h3FontChanged"),
                  QStringLiteral("h4FontChanged") };
    QCOMPARE(joined(recorder.take()),
             joined(expected) + QLatin1Char(' ') + update + QLatin1Char(' ') + update);
}

void tst_ThemeDocument::onlyTitleLeavesTheValues()
{
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"title": "After"})")), 0);
    QCOMPARE(theme.title(), QStringLiteral("After"));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
}

void tst_ThemeDocument::titles_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QString>("expected");

    QTest::newRow("text") << QByteArray(R"({"title": "Dusk"})") << title("Dusk");
    QTest::newRow("unicode") << QByteArray(R"({"title": "Dämmerung 夕"})") << title("Dämmerung 夕");
    QTest::newRow("escapes") << QByteArray(R"({"title": "\u0041\n\t"})") << title("A\n\t");
    QTest::newRow("outer blanks stay") << QByteArray(R"({"title": " a "})") << title(" a ");
    QTest::newRow("empty") << QByteArray(R"({"title": ""})") << QString();
    QTest::newRow("missing") << QByteArray("{}") << QString();
    QTest::newRow("null") << QByteArray(R"({"title": null})") << QString();
    QTest::newRow("number") << QByteArray(R"({"title": 12})") << QString();
    QTest::newRow("boolean") << QByteArray(R"({"title": true})") << QString();
    QTest::newRow("array") << QByteArray(R"({"title": ["a"]})") << QString();
    QTest::newRow("object") << QByteArray(R"({"title": {"a": "b"}})") << QString();
    QTest::newRow("other letter case")
            << QByteArray(R"({"Title": "a", "TITLE": "b"})") << QString();
    QTest::newRow("in global") << QByteArray(R"({"global": {"title": "a"}})") << QString();
}

void tst_ThemeDocument::titles()
{
    QFETCH(QByteArray, document);
    QFETCH(QString, expected);

    Theme theme;
    theme.setTitle(QStringLiteral("Before"));
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), document)), 0);
    QCOMPARE(theme.title(), expected);
}

void tst_ThemeDocument::globalAppliesOverTheDefaults()
{
    const Theme defaults;
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"global": {"radius": 6}})")), 0);
    QCOMPARE(theme.radius(), 6);
    QCOMPARE(theme.colors()->foreground(), defaults.colors()->foreground());
    QCOMPARE(theme.colors()->lighterForeground(), defaults.colors()->lighterForeground());
    QCOMPARE(theme.colors()->background(), defaults.colors()->background());
    QCOMPARE(theme.fonts()->mainFont(), QFont());
    QCOMPARE(theme.fonts()->h1Font(), QFont());
    // Tables are merged, not replaced.
    QCOMPARE(classNames(theme), QStringList({ title("both"), title("own") }));
    QVERIFY(dataOf(theme)->styles.contains(title("Own")));
}

void tst_ThemeDocument::globalDerivesMissingShades()
{
    Theme theme;
    const QString path = write(QStringLiteral("a.thm"), R"({"global": {
            "colors": {"foreground": "#306090"}, "fonts": {"main": {"pointSize": 16}}}})");
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(theme.colors()->foreground(), QColor(0x30, 0x60, 0x90));
    QCOMPARE(theme.colors()->darkerForeground(), QColor(0x18, 0x30, 0x48));
    QCOMPARE(theme.colors()->lighterForeground(),
             QColor(QColor(0x30, 0x60, 0x90).lighter(200).name()));
    QCOMPARE(theme.fonts()->mainFont().pointSizeF(), 12.0);
    QCOMPARE(theme.fonts()->h4Font().pointSize(), 13);
    QCOMPARE(theme.radius(), 0);
}

void tst_ThemeDocument::globalRadius_data()
{
    QTest::addColumn<QByteArray>("radius");
    QTest::addColumn<int>("expected");

    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("negative zero") << QByteArray("-0") << 0;
    QTest::newRow("positive") << QByteArray("4") << 4;
    QTest::newRow("whole with a fraction of zero") << QByteArray("4.0") << 4;
    QTest::newRow("whole with an exponent") << QByteArray("4e1") << 40;
    QTest::newRow("largest") << QByteArray("2147483647") << std::numeric_limits<int>::max();
    QTest::newRow("too large") << QByteArray("2147483648") << 0;
    QTest::newRow("huge") << QByteArray("1e308") << 0;
    QTest::newRow("negative") << QByteArray("-1") << 0;
    QTest::newRow("not whole") << QByteArray("2.5") << 0;
    QTest::newRow("text") << QByteArray("\"4\"") << 0;
    QTest::newRow("null") << QByteArray("null") << 0;
    QTest::newRow("boolean") << QByteArray("true") << 0;
    QTest::newRow("array") << QByteArray("[4]") << 0;
    QTest::newRow("object") << QByteArray("{}") << 0;
}

void tst_ThemeDocument::globalRadius()
{
    QFETCH(QByteArray, radius);
    QFETCH(int, expected);

    // A radius that is passed over leaves the default, as the scope applies over the defaults.
    Theme theme;
    theme.setRadius(8);
    QCOMPARE(
            theme.load(write(QStringLiteral("a.thm"), R"({"global": {"radius": )" + radius + "}}")),
            0);
    QCOMPARE(theme.radius(), expected);
}

void tst_ThemeDocument::emptyGlobalChangesNothing()
{
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    SignalRecorder recorder(dataOf(theme));
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"global": {}})")), 0);
    QCOMPARE(recorder.take(), QStringList());
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(before));
    QCOMPARE(theme.findChildren<Theme *>().size(), 0);
}

void tst_ThemeDocument::temporaryIsReleasedLater()
{
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"global": {"radius": 3}})")), 0);
    const QList<Theme *> temporaries = theme.findChildren<Theme *>();
    QCOMPARE(temporaries.size(), 1);
    const QPointer<Theme> temporary = temporaries.first();
    const QPointer<ThemePrivate> temporaryData = dataOf(*temporary);
    QCOMPARE(temporary->parent(), &theme);
    QCOMPARE(temporary->radius(), 3);
    QVERIFY(temporaryData != dataOf(theme));
    deleteDeferred();
    QVERIFY(!temporary);
    QVERIFY(!temporaryData);
    QCOMPARE(theme.children(), QObjectList());
    QCOMPARE(theme.radius(), 3);
}

void tst_ThemeDocument::classScopes_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QByteArray>("expected");

    const auto row = [](const char *name, const char *key, const char *value,
                        const char *expected) {
        QTest::newRow(name) << QByteArray(key) << QByteArray(value) << QByteArray(expected);
    };
    row("object", "header", R"({"radius": 3, "own": [1]})", R"({"radius": 3, "own": [1]})");
    row("empty object", "header", "{}", "{}");
    row("text", "header", R"("x")", "{}");
    row("number", "header", "12", "{}");
    row("null", "header", "null", "{}");
    row("boolean", "header", "true", "{}");
    row("array", "header", R"([{"radius": 3}])", "{}");
    row("Global in other letter case", "Global", R"({"radius": 3})", R"({"radius": 3})");
    row("TITLE in other letter case", "TITLE", R"({"radius": 3})", R"({"radius": 3})");
    row("extends without a parent", "extends", R"({"radius": 3})", R"({"radius": 3})");
    row("members of scopes", "colors", R"({"foreground": "red"})", R"({"foreground": "red"})");
    row("radius as a key", "radius", "4", "{}");
    row("empty key", "", R"({"radius": 3})", R"({"radius": 3})");
    row("tab", R"(a\tb)", R"({"radius": 3})", R"({"radius": 3})");
    row("newline", R"(a\nb)", R"({"radius": 3})", R"({"radius": 3})");
    row("space", "a b", R"({"radius": 3})", R"({"radius": 3})");
    row("unicode", "見出し", R"({"radius": 3})", R"({"radius": 3})");
    row("replaces a former one", "both", R"({"new": 1})", R"({"new": 1})");
    row("replaces a former one by an empty one", "both", "7", "{}");
}

void tst_ThemeDocument::classScopes()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, value);
    QFETCH(QByteArray, expected);

    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    const QByteArray document = "{\"" + key + "\": " + value + "}";
    const QString name = parsed(document).keys().first();
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), document)), 0);
    QVERIFY(dataOf(theme)->classScopes.contains(name));
    QCOMPARE(dataOf(theme)->classScopes.value(name), parsed(expected));
    QVERIFY(!dataOf(theme)->classScopes.contains(title("title")));
    QVERIFY(!dataOf(theme)->classScopes.contains(title("global")));
    QCOMPARE(dataOf(theme)->classScopes.value(title("own")), parsed(R"({"k": "own"})"));
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(before));
}

void tst_ThemeDocument::classScopesAreNeverRemoved()
{
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"),
                              R"({"header": {"radius": 1}, "muted": {"radius": 2}})")),
             0);
    write(QStringLiteral("a.thm"), R"({"muted": {"radius": 3}, "global": {"radius": 4}})");
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(dataOf(theme)->classScopes.value(title("header")), parsed(R"({"radius": 1})"));
    QCOMPARE(dataOf(theme)->classScopes.value(title("muted")), parsed(R"({"radius": 3})"));
}

void tst_ThemeDocument::readWithoutHeader()
{
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    theme.read(parsed(R"({"title": "Not read", "global": {"radius": 9}, "radius": 5,
            "colors": {"selection": "#010203"}, "header": {"radius": 1}})"),
               false);
    QCOMPARE(joined(recorder.take()), update + QStringLiteral(" updateTheme"));
    QCOMPARE(theme.title(), QStringLiteral("Before"));
    QCOMPARE(theme.radius(), 5);
    QCOMPARE(theme.colors()->selection(), QColor(1, 2, 3));
    QCOMPARE(theme.colors()->foreground(), QPalette().color(QPalette::WindowText));
    QCOMPARE(classNames(theme),
             QStringList({ title("both"), title("colors"), title("header"), title("own"),
                           title("radius") }));
    QCOMPARE(dataOf(theme)->classScopes.value(title("colors")),
             parsed(R"({"selection": "#010203"})"));
    QCOMPARE(dataOf(theme)->classScopes.value(title("radius")), QJsonObject());
}

void tst_ThemeDocument::readEmptyDocument()
{
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    SignalRecorder recorder(&theme);
    theme.read(QJsonObject(), false);
    QCOMPARE(recorder.take(), QStringList());
    // Reading sends no update of its own.
    theme.read(QJsonObject(), true);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("titleChanged()")));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
}

void tst_ThemeDocument::loadSetsTheFileName()
{
    const QString path = write(QStringLiteral("a.thm"), R"({"title": "A"})");
    Theme theme;
    SignalRecorder recorder(&theme);
    QString titleThen;
    recorder.onSignal([&](const QString &signal) {
        if (signal == QLatin1String("filenameChanged"))
            titleThen = theme.title() + theme.filename();
    });
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(theme.filename(), path);
    QCOMPARE(titleThen, path);
    recorder.take();
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(joined(recorder.take()), update);
}

void tst_ThemeDocument::reloadReadsAgain()
{
    Theme theme;
    QCOMPARE(theme.load(
                     write(QStringLiteral("a.thm"), R"({"title": "A", "global": {"radius": 4}})")),
             0);
    write(QStringLiteral("a.thm"), R"({"title": "B", "global": {"radius": 5}})");
    QCOMPARE(theme.radius(), 4);
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(theme.title(), QStringLiteral("B"));
    QCOMPARE(theme.radius(), 5);
    // Without a "global" scope the values stay.
    write(QStringLiteral("a.thm"), R"({"title": "C"})");
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(theme.radius(), 5);
}

void tst_ThemeDocument::stylesAreThereWhenTheUpdateIsSent()
{
    const QString path = write(QStringLiteral("a.thm"), R"({"title": "A", "header": {"k": 1}})");
    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    Theme theme;
    theme.setClassnames(QStringLiteral("header"));
    QStringList found;
    SignalRecorder recorder(&theme);
    recorder.onSignal([&](const QString &signal) {
        const bool hasStyle = !theme.getStyle(QStringLiteral("Card")).isEmpty();
        const bool hasClass = theme.getClassValue(QStringLiteral("k"), 0).toInt() == 1;
        found.append(signal + (hasStyle ? QStringLiteral(" style") : QString())
                     + (hasClass ? QStringLiteral(" class") : QString()));
    });
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(found,
             QStringList({ QStringLiteral("filenameChanged"), QStringLiteral("titleChanged(A)"),
                           QStringLiteral("themeObjectChanged style class"),
                           QStringLiteral("radiusChanged style class"),
                           QStringLiteral("needUpdate style class") }));
}

void tst_ThemeDocument::loadThemeScopeOfNothing()
{
    Theme theme;
    Theme target;
    QVERIFY(!theme.loadThemeScope(nullptr, QJsonObject(), true));
    QVERIFY(!theme.loadThemeScope(&target, QJsonObject(), true));
    QCOMPARE(theme.children(), QObjectList());
}

void tst_ThemeDocument::loadThemeScopeCreatesATheme()
{
    Theme theme;
    fill(theme, QStringLiteral("Own"));
    SignalRecorder recorder(&theme);
    Theme *created = theme.loadThemeScope(nullptr, parsed(R"({"unknown": 1})"), true);
    QVERIFY(created);
    QCOMPARE(created->parent(), &theme);
    QVERIFY(Snapshot(*created).sameColorsFontsAndRadius(Snapshot(Theme())));
    QCOMPARE(created->title(), QString());
    QVERIFY(dataOf(*created)->classScopes.isEmpty());
    Theme *second = theme.loadThemeScope(
            nullptr, parsed(R"({"colors": {"selection": "#010203"}, "radius": 3})"), true);
    QVERIFY(second != created);
    QCOMPARE(second->colors()->selection(), QColor(1, 2, 3));
    QCOMPARE(second->radius(), 3);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeDocument::loadThemeScopeIntoATarget()
{
    Theme theme;
    for (const bool deriveMissing : { true, false }) {
        Theme target;
        fill(target, QStringLiteral("Target"));
        target.colors()->setLighterForeground(QColor(11, 21, 31));
        SignalRecorder recorder(&target);
        const QJsonObject scope = parsed(R"({"colors": {"foreground": "#306090"},
                "fonts": {"main": {"pointSize": 16}}, "radius": 3, "title": "T"})");
        QCOMPARE(theme.loadThemeScope(&target, scope, deriveMissing), &target);
        QCOMPARE(recorder.take(), QStringList(QStringLiteral("radiusChanged")));
        QCOMPARE(target.colors()->foreground(), QColor(0x30, 0x60, 0x90));
        QCOMPARE(target.colors()->lighterForeground(),
                 deriveMissing ? QColor(QColor(0x30, 0x60, 0x90).lighter(200).name())
                               : QColor(11, 21, 31));
        QCOMPARE(target.fonts()->mainFont().pointSizeF(), 12.0);
        QCOMPARE(target.title(), QStringLiteral("Target"));
        QCOMPARE(target.parent(), nullptr);
        QCOMPARE(classNames(target), QStringList({ title("both"), title("own") }));
    }
    QCOMPARE(theme.children(), QObjectList());
}

void tst_ThemeDocument::loadThemeScopeRadius_data()
{
    QTest::addColumn<QByteArray>("radius");
    QTest::addColumn<int>("expected");

    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("positive") << QByteArray("3") << 3;
    QTest::newRow("the same") << QByteArray("8") << 8;
    QTest::newRow("negative") << QByteArray("-1") << 8;
    QTest::newRow("not whole") << QByteArray("2.5") << 8;
    QTest::newRow("text") << QByteArray("\"4\"") << 8;
    QTest::newRow("null") << QByteArray("null") << 8;
    QTest::newRow("huge") << QByteArray("1e308") << 8;
}

void tst_ThemeDocument::loadThemeScopeRadius()
{
    QFETCH(QByteArray, radius);
    QFETCH(int, expected);

    Theme target;
    target.setRadius(8);
    SignalRecorder recorder(&target);
    target.loadThemeScope(&target, parsed(R"({"radius": )" + radius + "}"), true);
    QCOMPARE(target.radius(), expected);
    QCOMPARE(recorder.take(),
             expected == 8 ? QStringList() : QStringList(QStringLiteral("radiusChanged")));
}

void tst_ThemeDocument::loadThemeScopeLeavesTheScopeAlone()
{
    Theme theme;
    const QJsonObject scope = parsed(R"({"fonts": {"h1": {"italic": true}}})");
    theme.loadThemeScope(&theme, scope, true);
    QCOMPARE(scope, parsed(R"({"fonts": {"h1": {"italic": true}}})"));
}

void tst_ThemeDocument::extendsTakesTheData()
{
    Theme parent;
    fill(parent, QStringLiteral("Parent of values"));
    parent.setFilename(QStringLiteral("/parent.thm"));
    parent.setClassnames(QStringLiteral("own"));
    parent.setClassnames(QString());
    ThemeManager::getInstance()->addTheme(&parent);
    Theme theme;
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "Child", "extends": "Parent of values",
                                   "both": {"k": "new"}, "header": {}})");
    QCOMPARE(theme.load(path), 0);
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(Snapshot(parent)));
    QCOMPARE(theme.title(), QStringLiteral("Child"));
    QCOMPARE(theme.filename(), path);
    QCOMPARE(dataOf(theme)->styles, dataOf(parent)->styles);
    QCOMPARE(classNames(theme),
             QStringList({ title("both"), title("extends"), title("header"), title("own") }));
    QCOMPARE(dataOf(theme)->classScopes.value(title("own")), parsed(R"({"k": "own"})"));
    QCOMPARE(dataOf(theme)->classScopes.value(title("both")), parsed(R"({"k": "new"})"));
    QCOMPARE(dataOf(theme)->classScopes.value(title("extends")), QJsonObject());
    QCOMPARE(dataOf(parent)->classScopes.value(title("both")), parsed(R"({"k": "old"})"));
}

void tst_ThemeDocument::extendsWithGlobalTakesScopesAndStyles()
{
    Theme parent;
    fill(parent, QStringLiteral("Parent of scopes"));
    ThemeManager::getInstance()->addTheme(&parent);
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"),
                              R"({"extends": "Parent of scopes", "global": {"radius": 6}})")),
             0);
    QCOMPARE(theme.radius(), 6);
    QCOMPARE(theme.colors()->foreground(), QPalette().color(QPalette::WindowText));
    QCOMPARE(theme.colors()->background(), QPalette().color(QPalette::Window));
    QCOMPARE(theme.fonts()->mainFont(), QFont());
    QCOMPARE(dataOf(theme)->classScopes.value(title("own")), parsed(R"({"k": "own"})"));
    QCOMPARE(dataOf(theme)->styles, dataOf(parent)->styles);
}

void tst_ThemeDocument::extendsIsCopied()
{
    Theme parent;
    fill(parent, QStringLiteral("Parent that changes"));
    ThemeManager::getInstance()->addTheme(&parent);
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"extends": "Parent that changes"})")),
             0);
    QVERIFY(dataOf(theme) != dataOf(parent));
    parent.setRadius(30);
    QCOMPARE(theme.radius(), 8);
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(theme.radius(), 30);
}

void tst_ThemeDocument::extendsChains()
{
    Theme grandparent;
    Theme parent;
    Theme theme;
    QCOMPARE(grandparent.load(write(QStringLiteral("1.thm"),
                                    R"({"title": "Chain 1", "global": {"radius": 5},
                                        "one": {"k": 1}, "all": {"k": 1}})")),
             0);
    ThemeManager::getInstance()->addTheme(&grandparent);
    QCOMPARE(parent.load(write(QStringLiteral("2.thm"),
                               R"({"title": "Chain 2", "extends": "Chain 1", "two": {"k": 2},
                                   "all": {"k": 2}})")),
             0);
    ThemeManager::getInstance()->addTheme(&parent);
    QCOMPARE(theme.load(write(QStringLiteral("3.thm"),
                              R"({"title": "Chain 3", "extends": "Chain 2"})")),
             0);
    QCOMPARE(theme.radius(), 5);
    QCOMPARE(classNames(theme),
             QStringList({ title("all"), title("extends"), title("one"), title("two") }));
    QCOMPARE(dataOf(theme)->classScopes.value(title("all")), parsed(R"({"k": 2})"));
}

void tst_ThemeDocument::extendsUnknown_data()
{
    QTest::addColumn<QString>("extends");

    QTest::newRow("unknown") << title("No such theme");
    QTest::newRow("other letter case") << title("known parent");
    QTest::newRow("outer blank") << title("Known parent ");
    QTest::newRow("beginning of a title") << title("Known");
    QTest::newRow("its own title") << title("Child of nobody");
    QTest::newRow("blank") << title(" ");
    QTest::newRow("file name") << title("a.thm");
}

void tst_ThemeDocument::extendsUnknown()
{
    QFETCH(QString, extends);

    Theme parent;
    parent.setTitle(QStringLiteral("Known parent"));
    ThemeManager::getInstance()->addTheme(&parent);
    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "Child of nobody", "global": {"radius": 3},
                                   "header": {}, "extends": ")"
                                       + extends.toUtf8() + "\"}");
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    QCOMPARE(theme.load(path), 2);
    // Nothing of the file is applied.
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("filenameChanged")));
    QCOMPARE(theme.title(), QStringLiteral("Before"));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
    QCOMPARE(theme.reload(), 2);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeDocument::extendsNothing_data()
{
    QTest::addColumn<QByteArray>("extends");

    QTest::newRow("empty") << QByteArray("\"\"");
    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("number") << QByteArray("12");
    QTest::newRow("boolean") << QByteArray("true");
    QTest::newRow("array") << QByteArray("[\"No such theme\"]");
    QTest::newRow("object") << QByteArray("{\"title\": \"No such theme\"}");
}

void tst_ThemeDocument::extendsNothing()
{
    QFETCH(QByteArray, extends);

    // A theme without a title is no parent of those that extend nothing.
    Theme untitled;
    untitled.setRadius(30);
    ThemeManager::getInstance()->addTheme(&untitled);
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"),
                              R"({"title": "T", "extends": )" + extends + "}")),
             0);
    QCOMPARE(theme.title(), QStringLiteral("T"));
    QCOMPARE(theme.radius(), 0);
}

void tst_ThemeDocument::extendsItself()
{
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "Own parent", "extends": "Own parent",
                                   "header": {"k": 1}})");
    Theme theme;
    QCOMPARE(theme.load(path), 2);
    // Native code may have given it that title before.
    fill(theme, QStringLiteral("Own parent"));
    ThemeManager::getInstance()->addTheme(&theme);
    const Snapshot before(theme);
    QCOMPARE(theme.reload(), 0);
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(before));
    QVERIFY(dataOf(theme)->classScopes.contains(title("header")));
}

void tst_ThemeDocument::extendsAThemeWithoutData()
{
    Theme parent;
    parent.setTitle(QStringLiteral("Parent without data"));
    ThemeManager::getInstance()->addTheme(&parent);
    delete dataOf(parent);
    Theme theme;
    theme.setRadius(8);
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"),
                              R"({"title": "T", "extends": "Parent without data"})")),
             0);
    QCOMPARE(theme.title(), QStringLiteral("T"));
    QCOMPARE(theme.radius(), 8);
}

void tst_ThemeDocument::extendsTheFirstOfThatTitle()
{
    Theme first;
    first.setTitle(QStringLiteral("Twice"));
    first.setRadius(1);
    Theme second;
    second.setTitle(QStringLiteral("Twice"));
    second.setRadius(2);
    ThemeManager::getInstance()->addTheme(&first);
    ThemeManager::getInstance()->addTheme(&second);
    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), R"({"extends": "Twice"})")), 0);
    QCOMPARE(theme.radius(), 1);
}

void tst_ThemeDocument::retriedAfterTheParentCame()
{
    Theme theme;
    QCOMPARE(theme.load(
                     write(QStringLiteral("a.thm"), R"({"title": "T", "extends": "Late parent"})")),
             2);
    Theme parent;
    parent.setTitle(QStringLiteral("Late parent"));
    parent.setRadius(8);
    ThemeManager::getInstance()->addTheme(&parent);
    QCOMPARE(theme.reload(), 0);
    QCOMPARE(theme.title(), QStringLiteral("T"));
    QCOMPARE(theme.radius(), 8);
}

void tst_ThemeDocument::loadedFolder()
{
    write(QStringLiteral("1 base.thm"), R"({"title": "Folder base", "global": {"radius": 3},
            "header": {"k": 1}})");
    write(QStringLiteral("2 child.thm"), R"({"title": "Folder child", "extends": "Folder base"})");
    write(QStringLiteral("3 broken.thm"), "{");
    write(QStringLiteral("4 empty.thm"), "");
    write(QStringLiteral("5 orphan.thm"), R"({"title": "Orphan", "extends": "Nobody"})");
    QVERIFY(QDir(folder()).mkdir(QStringLiteral("6 folder.thm")));
    write(QStringLiteral("7 ring.thm"), R"({"title": "Ring A", "extends": "Ring B"})");
    write(QStringLiteral("8 ring.thm"), R"({"title": "Ring B", "extends": "Ring A"})");
    // The folder can't be opened.
    expectOpenFailure();
    ThemeManager *manager = ThemeManager::getInstance();
    const int rows = manager->rowCount();
    manager->loadThemes(folder());
    QStringList titles;
    for (int row = rows; row < manager->rowCount(); ++row)
        titles.append(manager->data(manager->index(row), Qt::DisplayRole).toString());
    QCOMPARE(titles, QStringList({ title("Folder base"), title("Folder child"), QString() }));
    const Theme *child = manager->themeFromName(title("Folder child"));
    QVERIFY(child);
    QCOMPARE(child->radius(), 3);
    QVERIFY(dataOf(*child)->classScopes.contains(title("header")));
}

void tst_ThemeDocument::unopenable_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("missing file") << QStringLiteral("missing.thm");
    QTest::newRow("missing folder") << QStringLiteral("missing/a.thm");
    QTest::newRow("folder") << QStringLiteral("folder.thm");
    QTest::newRow("folder with a slash") << QStringLiteral("folder.thm/");
    QTest::newRow("dangling link") << QStringLiteral("dangling.thm");
    QTest::newRow("link to itself") << QStringLiteral("loop.thm");
    QTest::newRow("below a file") << QStringLiteral("file.thm/a.thm");
    QTest::newRow("very long name") << QString(5000, QLatin1Char('a'));
    QTest::newRow("no name") << QString();
    QTest::newRow("missing resource") << QStringLiteral(":/missing.thm");
    QTest::newRow("resource as an address") << QStringLiteral("qrc:/missing.thm");
    QTest::newRow("file as an address") << QStringLiteral("file:///missing.thm");
}

void tst_ThemeDocument::unopenable()
{
    QFETCH(QString, name);

    QVERIFY(QDir(folder()).mkdir(QStringLiteral("folder.thm")));
    write(QStringLiteral("file.thm"), R"({"title": "File"})");
    QVERIFY(QFile::link(folder() + QStringLiteral("/nowhere"),
                        folder() + QStringLiteral("/dangling.thm")));
    QVERIFY(QFile::link(folder() + QStringLiteral("/loop.thm"),
                        folder() + QStringLiteral("/loop.thm")));
    const bool isRelative = !name.isEmpty() && !name.contains(QLatin1Char(':'));
    const QString path = isRelative ? folder() + QLatin1Char('/') + name : name;

    Theme theme;
    fill(theme, QStringLiteral("Before"));
    theme.setFilename(QStringLiteral("/before.thm"));
    const Snapshot before(theme);
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    expectOpenFailure();
    QCOMPARE(theme.load(path), 1);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("filenameChanged")));
    QCOMPARE(theme.filename(), path);
    QCOMPARE(theme.title(), QStringLiteral("Before"));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
    // Again, and again one line on the log.
    expectOpenFailure();
    QCOMPARE(theme.reload(), 1);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeDocument::emptyFile()
{
    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    SignalRecorder recorder(&theme);
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), "")), 1);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("filenameChanged")));
    QCOMPARE(theme.title(), QStringLiteral("Before"));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
}

void tst_ThemeDocument::pipesAndDevices_data()
{
    QTest::addColumn<QString>("device");
    QTest::newRow("pipe that nobody writes to") << QString();
    QTest::newRow("link to an endless device") << QStringLiteral("/dev/zero");
    QTest::newRow("link to the null device") << QStringLiteral("/dev/null");
}

void tst_ThemeDocument::pipesAndDevices()
{
    QFETCH(QString, device);
    const QString path = folder() + QStringLiteral("/a.thm");
    if (device.isEmpty())
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    else
        QVERIFY(QFile::link(device, path));

    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    QCOMPARE(theme.load(path), 1);
    QCOMPARE(theme.title(), QStringLiteral("Before"));
    const Snapshot after(theme);
    QVERIFY(after.sameColorsFontsAndRadius(before));
    QVERIFY(after.sameScopes(before));
}

void tst_ThemeDocument::strangeFiles_data()
{
    QTest::addColumn<QByteArray>("content");

    const auto row = [](const char *name, const QByteArray &content) {
        QTest::newRow(name) << content;
    };
    const QByteArray object = R"({"title": "T", "extends": "Nobody", "global": {"radius": 3},
            "header": {}})";
    row("array at the top", "[" + object + "]");
    row("empty array", "[]");
    row("text at the top", "\"title\"");
    row("number at the top", "12");
    row("null at the top", "null");
    row("empty object", "{}");
    row("only blanks", " \n\t ");
    row("no JSON", "title = T");
    row("cut off", object.left(object.size() - 1));
    row("comma at the end", R"({"title": "T",})");
    row("comment", "// comment\n" + object);
    row("single quotes", "{'title': 'T'}");
    row("two documents", object + object);
    row("more after the object", object + " x");
    row("number that overflows", R"({"title": "T", "global": {"radius": 1e999}})");
    row("negative number that overflows", R"({"title": "T", "global": {"radius": -1e999}})");
    row("size that overflows",
        R"({"title": "T", "global": {"fonts": {"main": {"pointSize": 1e999}}}})");
    row("NaN", R"({"title": "T", "global": {"radius": NaN}})");
    row("Infinity", R"({"title": "T", "global": {"radius": Infinity}})");
    row("hexadecimal number", R"({"title": "T", "global": {"radius": 0x4}})");
    row("broken UTF-8", "{\"title\": \"\xff\xfe\xfa\"}");
    row("UTF-16",
        QByteArray("\xff\xfe{\0\"\0t\0\"\0:\0"
                   "1\0}\0",
                   16));
    row("null bytes", QByteArray(100, '\0'));
    row("text after a null byte", QByteArray("{}\0{\"title\": \"T\"}", 18));
    row("too deep",
        R"({"title": "T", "x": )" + QByteArray(5000, '[') + QByteArray(5000, ']') + "}");
    row("much too deep", QByteArray(1000000, '{'));
}

void tst_ThemeDocument::strangeFiles()
{
    QFETCH(QByteArray, content);

    // All of them count as an empty document that was read.
    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    Theme theme;
    fill(theme, QStringLiteral("Before"));
    const Snapshot before(theme);
    SignalRecorder recorder;
    recorder.watch(&theme);
    recorder.watch(dataOf(theme));
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), content)), 0);
    QCOMPARE(joined(recorder.take()), QStringLiteral("filenameChanged titleChanged() ") + update);
    QCOMPARE(theme.title(), QString());
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(before));
    QCOMPARE(classNames(theme), QStringList({ title("both"), title("own") }));
    QVERIFY(!theme.getStyle(QStringLiteral("Card")).isEmpty());
}

void tst_ThemeDocument::wrongTypes_data()
{
    QTest::addColumn<QByteArray>("document");

    // Each member that has a type of its own, with a value of each other type.
    static const struct
    {
        const char *name;
        const char *before;
        const char *after;
        const char *type;
    } places[] = {
        { "global", R"({"title": "T", "global": )", "}", "object" },
        { "colors", R"({"title": "T", "global": {"radius": 0, "colors": )", "}}", "object" },
        { "fonts", R"({"title": "T", "global": {"radius": 0, "fonts": )", "}}", "object" },
        { "radius", R"({"title": "T", "global": {"unknown": 0, "radius": )", "}}", "number" },
    };
    static const struct
    {
        const char *type;
        const char *text;
    } values[] = {
        { "null", "null" },
        { "boolean", "true" },
        { "number", "12" },
        { "text", "\"red\"" },
        { "array", R"([{"radius": 3}])" },
        { "object", R"({"foreground": 3, "unknown": {"pointSize": 3}})" },
    };
    for (const auto &place : places) {
        for (const auto &value : values) {
            if (qstrcmp(place.type, value.type) != 0) {
                QTest::addRow("%s is %s", place.name, value.type)
                        << QByteArray(place.before) + value.text + place.after;
            }
        }
    }
}

void tst_ThemeDocument::wrongTypes()
{
    QFETCH(QByteArray, document);

    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), document)), 0);
    QCOMPARE(theme.title(), QStringLiteral("T"));
    QVERIFY(Snapshot(theme).sameColorsFontsAndRadius(Snapshot(Theme())));
    QVERIFY(dataOf(theme)->classScopes.isEmpty());
}

void tst_ThemeDocument::readableOddities_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("radius");

    const auto row = [](const char *name, const QByteArray &content, int radius) {
        QTest::newRow(name) << content << radius;
    };
    row("byte order mark",
        "\xef\xbb\xbf"
        R"({"title": "T", "global": {"radius": 3}})",
        3);
    row("Windows line ends", "{\r\n\"title\": \"T\",\r\n\"global\": {\"radius\": 3}\r\n}\r\n", 3);
    // Of objects that are named twice, Qt 5.15 leaks the first one.
    row("title twice", R"({"title": "First", "title": "T", "global": {"radius": 3}})", 3);
    row("deep, but not too deep",
        R"({"title": "T", "global": {"radius": 3}, "x": )" + QByteArray(500, '[')
                + QByteArray(500, ']') + "}",
        3);
    row("huge sizes",
        R"({"title": "T", "global": {"radius": 3, "fonts": {"main": {"pointSize": 1e308},
            "h1": {"letterSpacing": 1e308}, "h2": {"pointSize": -1e308},
            "h3": {"pointSize": 0}}}})",
        3);
    row("colors and weights that name nothing",
        R"({"title": "T", "global": {"radius": 3, "colors": {"foreground": "#12", "selection": ""},
            "fonts": {"main": {"weight": "Nothing", "family": "Nothing"}}}})",
        3);
    row("class names with blanks and unicode",
        R"({"title": "T", "global": {"radius": 3}, "a\tb": {"k": 1}, "a\nb": {}, "名": {}})", 3);
}

void tst_ThemeDocument::readableOddities()
{
    QFETCH(QByteArray, content);
    QFETCH(int, radius);

    Theme theme;
    QCOMPARE(theme.load(write(QStringLiteral("a.thm"), content)), 0);
    QCOMPARE(theme.title(), QStringLiteral("T"));
    QCOMPARE(theme.radius(), radius);
    QCOMPARE(theme.colors()->foreground(), QPalette().color(QPalette::WindowText));
}

void tst_ThemeDocument::destroyedByAHandler_data()
{
    QTest::addColumn<int>("signalIndex");

    // The signals of a theme that extends another one and has a "global" scope.
    for (int i = 0; i < 11; ++i)
        QTest::addRow("signal %d", i) << i;
}

void tst_ThemeDocument::destroyedByAHandler()
{
    QFETCH(int, signalIndex);

    Theme parent;
    parent.setTitle(QStringLiteral("Parent of the destroyed"));
    ThemeManager::getInstance()->addTheme(&parent);
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "T", "extends": "Parent of the destroyed",
                                   "global": {"radius": 3}, "header": {}})");
    write(QStringLiteral("styles/Card.qml"), "QtObject {}");
    const QPointer<Theme> theme(new Theme);
    int signalCount = 0;
    SignalRecorder recorder(theme);
    recorder.onSignal([&](const QString &) {
        if (signalCount++ == signalIndex)
            delete theme;
    });
    theme->load(path);
    QVERIFY(!theme);
    QCOMPARE(signalCount, signalIndex + 1);
}

void tst_ThemeDocument::readAgainByAHandler()
{
    const QString path = write(QStringLiteral("a.thm"), R"({"title": "Old", "global": {"radius": 3},
            "header": {"k": "old"}})");
    Theme theme;
    bool readAgain = false;
    connect(&theme, &Theme::titleChanged, &theme, [&] {
        if (readAgain)
            return;
        readAgain = true;
        write(QStringLiteral("a.thm"), R"({"title": "New", "global": {"radius": 4},
                "header": {"k": "new"}})");
        QCOMPARE(theme.reload(), 0);
    });
    QCOMPARE(theme.load(path), 0);
    // What was read last stands.
    QCOMPARE(theme.title(), QStringLiteral("New"));
    QCOMPARE(theme.radius(), 4);
    theme.setClassnames(QStringLiteral("header"));
    QCOMPARE(theme.getClassValue(QStringLiteral("k"), QVariant()).toString(),
             QStringLiteral("new"));
}

void tst_ThemeDocument::targetDestroyedByItsScope_data()
{
    QTest::addColumn<QByteArray>("signal");
    QTest::addColumn<bool>("isItself");
    for (const char *signal : { "a color", "a font", "the radius" }) {
        QTest::addRow("by %s", signal) << QByteArray(signal) << false;
        QTest::addRow("by %s of the theme itself", signal) << QByteArray(signal) << true;
    }
}

void tst_ThemeDocument::targetDestroyedByItsScope()
{
    QFETCH(const QByteArray, signal);
    QFETCH(const bool, isItself);
    const QPointer<Theme> theme(new Theme);
    const QPointer<Theme> target(isItself ? theme.data() : new Theme);
    const auto destroy = [&] {
        delete target;
        deleteDeferred();
    };
    if (signal == "a color")
        connect(target->colors(), &ThemeObjectColors::foregroundChanged, this, destroy);
    else if (signal == "a font")
        connect(target->fonts(), &ThemeObjectFonts::mainFontChanged, this, destroy);
    else
        connect(target.data(), &Theme::radiusChanged, this, destroy);
    const QJsonObject scope = parsed(R"({"colors": {"foreground": "red", "background": "blue"},
            "fonts": {"main": {"pointSize": 31}, "h1": {"pointSize": 50}}, "radius": 7})");
    QCOMPARE(theme->loadThemeScope(target, scope, true), nullptr);
    QVERIFY(!target);
    delete theme;
    deleteDeferred();
}

TAVOLINS_TEST_MAIN(tst_ThemeDocument)
#include "tst_themedocument.moc"
