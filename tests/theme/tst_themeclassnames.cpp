#include "manager/thememanager.h"
#include "support/fontdatabase.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/testfont.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QMetaProperty>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

#include <functional>
#include <memory>

Q_DECLARE_METATYPE(std::function<void(ThemePrivate &)>)

namespace {

const QStringList rebuiltAndSet{ QStringLiteral("themeObjectChanged"),
                                 QStringLiteral("classnamesChanged") };

/// A theme with class scopes, given as the members of a JSON object.
std::unique_ptr<Theme> themeWith(const QByteArray &scopes)
{
    std::unique_ptr<Theme> theme(new Theme);
    theme->colors()->setForeground(QColor(10, 20, 30));
    theme->colors()->setLighterForeground(QColor(11, 21, 31));
    theme->colors()->setBackground(QColor(40, 50, 60));
    theme->setRadius(8);
    const QJsonObject all = parsed(scopes);
    for (auto scope = all.begin(); scope != all.end(); ++scope)
        dataOf(*theme)->classScopes.insert(scope.key(), scope.value().toObject());
    return theme;
}

const char *const twoClasses = R"({
    "a": {"colors": {"foreground": "#0000aa"}, "fonts": {"main": {"family": "Class A"}},
          "name": "A", "onlyA": 1},
    "b": {"colors": {"foreground": "#0000bb", "background": "#bb0000"}, "name": "B", "onlyB": 2},
    "empty": {}
})";

} // namespace

class tst_ThemeClassnames : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void setClassnamesStoresAndAnnounces_data();
    void setClassnamesStoresAndAnnounces();
    void handlersFindTheNewClass();
    void hasClassname_data();
    void hasClassname();

    void decidingClass_data();
    void decidingClass();
    void noOverloadedTheme_data();
    void noOverloadedTheme();
    void overloadedThemeIsACopyWithTheScopeOnTop();
    void missingShadesAreKept();
    void radiusOfAScopeDoesNotShow_data();
    void radiusOfAScopeDoesNotShow();
    void scopesOfTheWrongTypes_data();
    void scopesOfTheWrongTypes();
    void formerOverloadedThemeIsReleasedLater();
    void overloadedThemeFollowsTheData();
    void classesAreEachItemsOwn();
    void everyRebuildAnnouncesOnce();
    void itemsOfOneClassLookAlike();
    void laterItemsFollowWhatHasChanged_data();
    void laterItemsFollowWhatHasChanged();
    void handlersFindTheWeightOfNewFonts();

    void getClassValue_data();
    void getClassValue();
    void foundValuesKeepTheirType_data();
    void foundValuesKeepTheirType();

    void getStyle_data();
    void getStyle();
    void getStyleIgnoresTheItemsClasses();
};

void tst_ThemeClassnames::initTestCase()
{
    ThemeManager::getInstance();
}

void tst_ThemeClassnames::setClassnamesStoresAndAnnounces_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("set");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("recorded");

    const auto row = [](const char *name, const char *before, const char *set, const char *stored,
                        const QStringList &recorded) {
        QTest::newRow(name) << QString::fromUtf8(before) << QString::fromUtf8(set)
                            << QString::fromUtf8(stored) << recorded;
    };
    row("first names", "", "a b", "a b", rebuiltAndSet);
    row("same names", "a b", "a b", "a b", {});
    row("same names, spaces around", "a b", " a b ", "a b", rebuiltAndSet);
    row("same names, newline at the end", "a b", "a b\n", "a b", rebuiltAndSet);
    row("other letter case", "a b", "A b", "A b", rebuiltAndSet);
    row("other order", "a b", "b a", "b a", rebuiltAndSet);
    row("inner spaces stay", "", "a  b", "a  b", rebuiltAndSet);
    row("inner tab stays", "", "\ta\tb\t", "a\tb", rebuiltAndSet);
    row("none", "a b", "", "", rebuiltAndSet);
    row("none again", "", "", "", {});
    row("only spaces", "", "  ", "", rebuiltAndSet);
    row("unicode", "", " ö 名前 ", "ö 名前", rebuiltAndSet);
    row("no-break spaces are trimmed", "",
        "\xc2\xa0"
        "a\xc2\xa0",
        "a", rebuiltAndSet);
}

void tst_ThemeClassnames::setClassnamesStoresAndAnnounces()
{
    QFETCH(QString, before);
    QFETCH(QString, set);
    QFETCH(QString, stored);
    QFETCH(QStringList, recorded);

    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    theme->setClassnames(before);
    SignalRecorder recorder(theme.get());
    theme->setClassnames(set);
    QCOMPARE(theme->classnames(), stored);
    QCOMPARE(recorder.take(), recorded);
    // What was set with spaces around counts as a change each time.
    theme->setClassnames(set);
    QCOMPARE(recorder.take(), set == stored ? QStringList() : rebuiltAndSet);
}

void tst_ThemeClassnames::handlersFindTheNewClass()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    QList<QColor> seen;
    SignalRecorder recorder(theme.get());
    recorder.onSignal([&](const QString &) {
        QCOMPARE(theme->classnames(), QStringLiteral("a"));
        seen.append(theme->colors()->foreground());
    });
    theme->setClassnames(QStringLiteral("a"));
    QCOMPARE(seen, QList<QColor>({ QColor(0, 0, 0xaa), QColor(0, 0, 0xaa) }));
}

void tst_ThemeClassnames::hasClassname_data()
{
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<QString>("classname");
    QTest::addColumn<bool>("expected");

    const auto row = [](const char *name, const char *classnames, const char *classname,
                        bool expected) {
        QTest::newRow(name) << QString::fromUtf8(classnames) << QString::fromUtf8(classname)
                            << expected;
    };
    row("empty in none", "", "", true);
    row("empty where two spaces follow each other", "a  b", "", true);
    row("empty in two names", "a b", "", false);
    row("empty in only spaces", "   ", "", true);
    row("first", "a b c", "a", true);
    row("middle", "a b c", "b", true);
    row("last", "a b c", "c", true);
    row("absent", "a b c", "d", false);
    row("other letter case", "primary", "Primary", false);
    row("beginning of a name", "primary", "prim", false);
    row("longer than a name", "primary", "primarya", false);
    row("two names at once", "a b", "a b", false);
    row("not trimmed", "a b", " a", false);
    row("tab is no separator, part", "a\tb", "a", false);
    row("tab is no separator, whole", "a\tb", "a\tb", true);
    row("newline is no separator, part", "a\nb", "b", false);
    row("newline is no separator, whole", "a\nb", "a\nb", true);
    row("unicode", "ö 名前", "名前", true);
    row("space", "a b", " ", false);
}

void tst_ThemeClassnames::hasClassname()
{
    QFETCH(QString, classnames);
    QFETCH(QString, classname);
    QFETCH(bool, expected);

    Theme theme;
    theme.setClassnames(classnames);
    SignalRecorder recorder(&theme);
    QCOMPARE(theme.hasClassname(classname), expected);
    QCOMPARE(recorder.take(), QStringList());
    if (classname.isEmpty())
        QCOMPARE(theme.hasClassname(QString()), expected);
}

void tst_ThemeClassnames::decidingClass_data()
{
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<QColor>("foreground");
    QTest::addColumn<QColor>("background");

    const QColor foregroundOfA(0, 0, 0xaa);
    const QColor foregroundOfB(0, 0, 0xbb);
    const QColor ownForeground(10, 20, 30);
    const QColor backgroundOfB(0xbb, 0, 0);
    const QColor ownBackground(40, 50, 60);
    const auto row = [](const char *name, const char *classnames, const QColor &foreground,
                        const QColor &background) {
        QTest::newRow(name) << QString::fromUtf8(classnames) << foreground << background;
    };
    row("one", "a", foregroundOfA, ownBackground);
    row("the first alone decides", "a b", foregroundOfA, ownBackground);
    row("the first alone decides, other order", "b a", foregroundOfB, backgroundOfB);
    row("without a scope is skipped", "x b a", foregroundOfB, backgroundOfB);
    row("with an empty scope is skipped", "empty b", foregroundOfB, backgroundOfB);
    row("many spaces", "  a   b ", foregroundOfA, ownBackground);
    row("a tab joins names", "a\tb", ownForeground, ownBackground);
    row("a newline joins names", "a\nb", ownForeground, ownBackground);
    row("letter case counts", "A b", foregroundOfB, backgroundOfB);
    row("a name twice", "b b", foregroundOfB, backgroundOfB);
}

void tst_ThemeClassnames::decidingClass()
{
    QFETCH(QString, classnames);
    QFETCH(QColor, foreground);
    QFETCH(QColor, background);

    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    theme->setClassnames(classnames);
    QCOMPARE(theme->colors()->foreground(), foreground);
    QCOMPARE(theme->colors()->background(), background);
}

void tst_ThemeClassnames::noOverloadedTheme_data()
{
    QTest::addColumn<QByteArray>("scopes");
    QTest::addColumn<QString>("classnames");

    QTest::newRow("no class names") << QByteArray(twoClasses) << QString();
    QTest::newRow("only spaces") << QByteArray(twoClasses) << QStringLiteral("   ");
    QTest::newRow("unknown") << QByteArray(twoClasses) << QStringLiteral("x y");
    QTest::newRow("empty scope") << QByteArray(twoClasses) << QStringLiteral("empty");
    QTest::newRow("theme without scopes") << QByteArray("{}") << QStringLiteral("a");
    QTest::newRow("scope that is no object")
            << QByteArray(R"({"extends": "Parent"})") << QStringLiteral("extends");
}

void tst_ThemeClassnames::noOverloadedTheme()
{
    QFETCH(QByteArray, scopes);
    QFETCH(QString, classnames);

    const std::unique_ptr<Theme> theme = themeWith(scopes);
    ThemePrivate *const data = dataOf(*theme);
    theme->setClassnames(QStringLiteral("temporary"));
    SignalRecorder recorder(theme.get());
    theme->setClassnames(classnames);
    QCOMPARE(recorder.take(), rebuiltAndSet);
    QCOMPARE(dataOf(*theme), data);
    QCOMPARE(theme->fonts()->parent(), data);
    QCOMPARE(theme->findChildren<Theme *>().size(), 0);
}

void tst_ThemeClassnames::overloadedThemeIsACopyWithTheScopeOnTop()
{
    const std::unique_ptr<Theme> theme = themeWith(R"({"a": {"colors": {"selection": "#00aa00"},
            "fonts": {"main": {"family": "Class A", "pointSize": 40}}, "radius": 3}})");
    ThemePrivate *const data = dataOf(*theme);
    data->styles.insert(QStringLiteral("Button"), QStringLiteral("file:///b.qml"));
    theme->setTitle(QStringLiteral("Own"));
    SignalRecorder recorder;
    recorder.watch(data);
    recorder.watch(&data->colors);
    recorder.watch(&data->fonts);
    theme->setClassnames(QStringLiteral("a"));
    QCOMPARE(recorder.take(), QStringList());

    const QList<Theme *> children = theme->findChildren<Theme *>();
    QCOMPARE(children.size(), 1);
    const Theme *overloaded = children.first();
    QCOMPARE(overloaded->parent(), theme.get());
    QCOMPARE(theme->colors(), overloaded->colors());
    QCOMPARE(theme->fonts(), overloaded->fonts());
    QVERIFY(dataOf(*theme) != data);
    QCOMPARE(theme->colors()->selection(), QColor(0, 0xaa, 0));
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
    QCOMPARE(theme->fonts()->mainFont().family(), QStringLiteral("Class A"));
    QCOMPARE(theme->fonts()->mainFont().pointSizeF(), 30.0);
    QCOMPARE(dataOf(*overloaded)->styles, data->styles);
    QCOMPARE(dataOf(*overloaded)->classScopes, data->classScopes);
    QCOMPARE(overloaded->radius(), 3);
    // The item's own data has not been touched.
    QVERIFY(data->colors.selection() != QColor(0, 0xaa, 0));
    QCOMPARE(data->fonts.mainFont(), QFont());
    QCOMPARE(data->radius, 8.0);
    QCOMPARE(theme->title(), QStringLiteral("Own"));
}

void tst_ThemeClassnames::missingShadesAreKept()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    const QColor darkerForeground = theme->colors()->darkerForeground();
    const QColor darkerBackground = theme->colors()->darkerBackground();
    theme->setClassnames(QStringLiteral("b"));
    QCOMPARE(theme->colors()->foreground(), QColor(0, 0, 0xbb));
    QCOMPARE(theme->colors()->lighterForeground(), QColor(11, 21, 31));
    QCOMPARE(theme->colors()->darkerForeground(), darkerForeground);
    QCOMPARE(theme->colors()->darkerBackground(), darkerBackground);
}

void tst_ThemeClassnames::radiusOfAScopeDoesNotShow_data()
{
    QTest::addColumn<QByteArray>("radius");
    QTest::addColumn<int>("overloadedRadius");

    QTest::newRow("positive") << QByteArray("3") << 3;
    QTest::newRow("zero") << QByteArray("0") << 0;
    QTest::newRow("negative") << QByteArray("-1") << 8;
    QTest::newRow("not whole") << QByteArray("2.5") << 8;
    QTest::newRow("text") << QByteArray("\"3\"") << 8;
    QTest::newRow("null") << QByteArray("null") << 8;
    QTest::newRow("boolean") << QByteArray("true") << 8;
    QTest::newRow("array") << QByteArray("[3]") << 8;
    QTest::newRow("object") << QByteArray("{}") << 8;
    QTest::newRow("too large") << QByteArray("2147483648") << 8;
    QTest::newRow("huge") << QByteArray("1e308") << 8;
}

void tst_ThemeClassnames::radiusOfAScopeDoesNotShow()
{
    QFETCH(QByteArray, radius);
    QFETCH(int, overloadedRadius);

    const std::unique_ptr<Theme> theme = themeWith(R"({"a": {"radius": )" + radius + "}}");
    SignalRecorder recorder(theme.get());
    theme->setClassnames(QStringLiteral("a"));
    QCOMPARE(recorder.take(), rebuiltAndSet);
    const Theme *overloaded = theme->findChild<Theme *>();
    QVERIFY(overloaded);
    QCOMPARE(overloaded->radius(), overloadedRadius);
    QCOMPARE(theme->radius(), 8);
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
}

void tst_ThemeClassnames::scopesOfTheWrongTypes_data()
{
    QTest::addColumn<QByteArray>("value");

    QTest::newRow("null") << QByteArray("null");
    QTest::newRow("boolean") << QByteArray("true");
    QTest::newRow("number") << QByteArray("12");
    QTest::newRow("text") << QByteArray("\"red\"");
    QTest::newRow("array") << QByteArray(R"([{"foreground": "red"}])");
    QTest::newRow("empty object") << QByteArray("{}");
}

void tst_ThemeClassnames::scopesOfTheWrongTypes()
{
    QFETCH(QByteArray, value);

    const std::unique_ptr<Theme> theme = themeWith(R"({"a": {"colors": )" + value + R"(, "fonts": )"
                                                   + value + "}}");
    theme->fonts()->setMainFont(QFont(QStringLiteral("Own"), 31));
    theme->setClassnames(QStringLiteral("a"));
    QVERIFY(theme->findChild<Theme *>());
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
    QCOMPARE(theme->fonts()->mainFont(), QFont(QStringLiteral("Own"), 31));
}

void tst_ThemeClassnames::formerOverloadedThemeIsReleasedLater()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    theme->setClassnames(QStringLiteral("a"));
    const QPointer<Theme> first = theme->findChild<Theme *>();
    const QPointer<ThemePrivate> firstData = dataOf(*theme);
    theme->setClassnames(QStringLiteral("b"));
    // Bindings that run may still use the former groups.
    QVERIFY(first);
    QCOMPARE(dataOf(*first), firstData.data());
    QVERIFY(dataOf(*theme) != firstData);
    deleteDeferred();
    QVERIFY(!first);
    QVERIFY(!firstData);
    QCOMPARE(theme->findChildren<Theme *>().size(), 1);
    QCOMPARE(theme->colors()->foreground(), QColor(0, 0, 0xbb));

    theme->setClassnames(QString());
    deleteDeferred();
    QCOMPARE(theme->findChildren<Theme *>().size(), 0);
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
}

void tst_ThemeClassnames::overloadedThemeFollowsTheData()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    theme->setClassnames(QStringLiteral("a"));
    const std::unique_ptr<Theme> other = themeWith(
            R"({"a": {"colors": {"selection": "#aa0000"}}})");
    other->colors()->setForeground(QColor(70, 80, 90));
    theme->hardCopy(other.get());
    QCOMPARE(theme->colors()->foreground(), QColor(70, 80, 90));
    QCOMPARE(theme->colors()->selection(), QColor(0xaa, 0, 0));
    // Rebuilt, never patched: also when nothing has changed.
    const ThemePrivate *before = dataOf(*theme);
    theme->sendUpdate();
    QVERIFY(dataOf(*theme) != before);
}

void tst_ThemeClassnames::classesAreEachItemsOwn()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    Theme first(*theme);
    Theme second(*theme);
    first.setClassnames(QStringLiteral("a"));
    second.setClassnames(QStringLiteral("b"));
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
    QCOMPARE(first.colors()->foreground(), QColor(0, 0, 0xaa));
    QCOMPARE(second.colors()->foreground(), QColor(0, 0, 0xbb));
}

void tst_ThemeClassnames::everyRebuildAnnouncesOnce()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    QSignalSpy spy(theme.get(), &Theme::themeObjectChanged);
    int expected = 0;
    for (const char *classnames : { "a b", "b a", "x", "empty", "" }) {
        theme->setClassnames(QLatin1String(classnames));
        QCOMPARE(spy.count(), ++expected);
        theme->sendUpdate();
        QCOMPARE(spy.count(), ++expected);
    }
}

void tst_ThemeClassnames::itemsOfOneClassLookAlike()
{
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    Theme first(*theme);
    Theme second(*theme);
    first.setClassnames(QStringLiteral("a"));
    second.setClassnames(QStringLiteral("x a b"));
    QCOMPARE(first.colors()->foreground(), second.colors()->foreground());
    QCOMPARE(first.colors()->background(), second.colors()->background());
    QCOMPARE(first.fonts()->mainFont(), second.fonts()->mainFont());
    QCOMPARE(second.fonts()->h4Font(), first.fonts()->h4Font());
    // Yet each has values of its own.
    QVERIFY(first.colors() != second.colors());
    first.colors()->setForeground(Qt::cyan);
    QCOMPARE(second.colors()->foreground(), QColor(0, 0, 0xaa));
    Theme third(*theme);
    third.setClassnames(QStringLiteral("a"));
    QCOMPARE(third.colors()->foreground(), QColor(0, 0, 0xaa));
    QCOMPARE(theme->colors()->foreground(), QColor(10, 20, 30));
}

void tst_ThemeClassnames::laterItemsFollowWhatHasChanged_data()
{
    typedef std::function<void(ThemePrivate &)> Change;
    QTest::addColumn<QString>("classname");
    QTest::addColumn<Change>("change");

    // An item of the class has been there before; what its scope gave then must not be used again.
    const struct
    {
        const char *name;
        Change change;
    } changes[] = {
        { "color of the theme",
          [](ThemePrivate &data) { data.colors.setDarkerBackground(QColor(1, 2, 3)); } },
        { "font of the theme",
          [](ThemePrivate &data) {
              data.fonts.setAlternateFont(QFont(QStringLiteral("Changed"), 77));
          } },
        { "radius of the theme", [](ThemePrivate &data) { data.radius = 3.5; } },
        { "scope",
          [](ThemePrivate &data) {
              const QJsonObject scope = parsed(R"({"colors": {"selection": "red"}})");
              data.classScopes.insert(QStringLiteral("a"), scope);
              data.classScopes.insert(QStringLiteral("b"), scope);
          } },
        { "scope of another class",
          [](ThemePrivate &data) {
              data.classScopes.insert(QStringLiteral("c"), parsed(R"({"radius": 2})"));
          } },
        { "style",
          [](ThemePrivate &data) {
              data.styles.insert(QStringLiteral("Button"), QStringLiteral("file:///b.qml"));
          } },
    };
    for (const auto &change : changes) {
        QTest::addRow("%s, scope with fonts", change.name) << QStringLiteral("a") << change.change;
        QTest::addRow("%s, scope with colors", change.name) << QStringLiteral("b") << change.change;
    }
    // Fonts that a scope leaves out are the theme's; only a scope with fonts starts from these.
    QTest::newRow("application's font, scope with fonts")
            << QStringLiteral("a") << Change([](ThemePrivate &) {
                   QGuiApplication::setFont(QFont(QStringLiteral("Changed"), 66));
               });
}

void tst_ThemeClassnames::laterItemsFollowWhatHasChanged()
{
    typedef std::function<void(ThemePrivate &)> Change;
    QFETCH(const QString, classname);
    QFETCH(Change, change);

    const QFont applicationFont = QGuiApplication::font();
    const std::unique_ptr<Theme> theme = themeWith(twoClasses);
    Theme before(*theme);
    before.setClassnames(classname);
    change(*dataOf(*theme));
    Theme after(*theme);
    after.setClassnames(classname);

    // The same without an item before.
    const std::unique_ptr<Theme> fresh = themeWith(twoClasses);
    change(*dataOf(*fresh));
    fresh->setClassnames(classname);
    QGuiApplication::setFont(applicationFont);
    for (const QMetaObject *meta :
         { &ThemeObjectColors::staticMetaObject, &ThemeObjectFonts::staticMetaObject }) {
        const bool areColors = meta == &ThemeObjectColors::staticMetaObject;
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            const QMetaProperty property = meta->property(i);
            const QObject *actual = areColors ? static_cast<QObject *>(after.colors())
                                              : static_cast<QObject *>(after.fonts());
            const QObject *expected = areColors ? static_cast<QObject *>(fresh->colors())
                                                : static_cast<QObject *>(fresh->fonts());
            QCOMPARE(property.read(actual), property.read(expected));
        }
    }
    QCOMPARE(dataOf(after)->radius, dataOf(*fresh)->radius);
    QCOMPARE(dataOf(after)->styles, dataOf(*fresh)->styles);
    QCOMPARE(dataOf(after)->classScopes, dataOf(*fresh)->classScopes);
}

/// A style that comes with a font file has its weight from the first signal that tells of new
/// fonts.
void tst_ThemeClassnames::handlersFindTheWeightOfNewFonts()
{
    QVERIFY2(!TestFont::content().isEmpty(), "needs DejaVu Sans");
    const std::unique_ptr<Theme> theme = themeWith(R"({"a": {"fonts": {"alternate": {"family": ")"
                                                   + TestFont::family().toUtf8()
                                                   + R"(", "weight": "Book"}}}})");
    QFont light;
    light.setWeight(QFont::Light);
    theme->fonts()->setAlternateFont(light);
    Theme item(*theme);
    // Connected before anything of the theme looks a style up.
    int weight = -1;
    connect(qApp, &QGuiApplication::fontDatabaseChanged, this, [&] {
        item.sendUpdate();
        weight = item.fonts()->alternateFont().weight();
    });
    item.setClassnames(QStringLiteral("a"));
    QCOMPARE(item.fonts()->alternateFont().weight(), int(QFont::Light));
    const int font = QFontDatabase::addApplicationFontFromData(TestFont::content());
    QVERIFY(font >= 0);
    qApp->disconnect(this);
    const int expected = FontDatabase::weight(TestFont::family(), QStringLiteral("Book"));
    QFontDatabase::removeApplicationFont(font);
    QCOMPARE(weight, expected);
    QVERIFY(weight > QFont::Light);
}

void tst_ThemeClassnames::getClassValue_data()
{
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("expected");

    const QVariant missing(QStringLiteral("default"));
    const auto row = [](const char *name, const char *classnames, const char *path,
                        const QVariant &expected) {
        QTest::newRow(name) << QString::fromUtf8(classnames) << QString::fromUtf8(path) << expected;
    };
    row("no class names", "", "name", missing);
    row("only spaces", "  ", "name", missing);
    row("unknown class", "x", "name", missing);
    row("empty scope", "empty", "name", missing);
    row("one class", "a", "name", QStringLiteral("A"));
    row("the last that holds it wins", "a b", "name", QStringLiteral("B"));
    row("the last that holds it wins, other order", "b a", "name", QStringLiteral("A"));
    row("a class that lacks it is passed over", "a b", "onlyA", 1);
    row("many spaces", " a   b ", "name", QStringLiteral("B"));
    row("a tab joins names", "a\tb", "name", missing);
    row("letter case of classes counts", "A", "name", missing);
    row("letter case of the path counts", "a", "Name", missing);
    row("two segments", "a", "x/y", QStringLiteral("A.x.y"));
    row("three segments", "a", "x/z/w", QStringLiteral("A.x.z.w"));
    row("doubled slash", "a", "x//y", QStringLiteral("A.x.y"));
    row("slashes around", "a", "//x/y/", QStringLiteral("A.x.y"));
    row("empty path", "a b", "", missing);
    row("only slashes", "a b", "///", missing);
    row("blanks belong to a segment", "a", " name", missing);
    row("a number on the way is passed over", "a number", "x/y", QStringLiteral("A.x.y"));
    row("an empty object on the way is passed over", "a emptyX", "x/y", QStringLiteral("A.x.y"));
    row("text on the way is passed over", "a text", "x/y", QStringLiteral("A.x.y"));
    row("an array on the way is passed over", "a array", "x/y", QStringLiteral("A.x.y"));
    row("null on the way is passed over", "a nullX", "x/y", QStringLiteral("A.x.y"));
    row("null at the end is found", "a nullY", "x/y", QVariant());
    row("beyond a value", "a", "name/more", missing);
    row("index into an array", "array", "x/0", missing);
    row("missing first segment", "a", "nothing/y", missing);
    row("missing last segment", "a", "x/nothing", missing);
    row("unicode", "ö", "キー/値", QStringLiteral("found"));
    row("members that themes use are found as well", "a", "colors/foreground",
        QStringLiteral("#0000aa"));
}

void tst_ThemeClassnames::getClassValue()
{
    QFETCH(QString, classnames);
    QFETCH(QString, path);
    QFETCH(QVariant, expected);

    const std::unique_ptr<Theme> theme = themeWith(R"({
        "a": {"name": "A", "onlyA": 1, "x": {"y": "A.x.y", "z": {"w": "A.x.z.w"}},
              "colors": {"foreground": "#0000aa"}},
        "b": {"name": "B", "onlyB": 2},
        "empty": {},
        "number": {"x": 7},
        "emptyX": {"x": {}},
        "text": {"x": "y"},
        "array": {"x": [{"y": "in an array"}]},
        "nullX": {"x": null},
        "nullY": {"x": {"y": null}},
        "ö": {"キー": {"値": "found"}}
    })");
    theme->setClassnames(classnames);
    SignalRecorder recorder(theme.get());
    const QVariant value = theme->getClassValue(path, QStringLiteral("default"));
    QCOMPARE(value, expected);
    QCOMPARE(value.isValid(), expected.isValid());
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeClassnames::foundValuesKeepTheirType_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QVariant>("expected");

    QTest::newRow("true") << QByteArray("true") << QVariant(true);
    QTest::newRow("false") << QByteArray("false") << QVariant(false);
    QTest::newRow("number") << QByteArray("2.5") << QVariant(2.5);
    QTest::newRow("huge number") << QByteArray("1e308") << QVariant(1e308);
    QTest::newRow("text") << QByteArray("\"2\"") << QVariant(QStringLiteral("2"));
    QTest::newRow("empty text") << QByteArray("\"\"") << QVariant(QString());
    QTest::newRow("array") << QByteArray("[1.5]") << QVariant(QVariantList{ 1.5 });
    QTest::newRow("object") << QByteArray(R"({"k": "v"})")
                            << QVariant(
                                       QVariantMap{ { QStringLiteral("k"), QStringLiteral("v") } });
    QTest::newRow("empty object") << QByteArray("{}") << QVariant(QVariantMap());
}

void tst_ThemeClassnames::foundValuesKeepTheirType()
{
    QFETCH(QByteArray, value);
    QFETCH(QVariant, expected);

    const std::unique_ptr<Theme> theme = themeWith(R"({"a": {"v": )" + value + "}}");
    theme->setClassnames(QStringLiteral("a"));
    // Whatever the type of the default is.
    for (const QVariant &defaultValue :
         { QVariant(), QVariant(12), QVariant(QStringLiteral("t")) }) {
        const QVariant found = theme->getClassValue(QStringLiteral("v"), defaultValue);
        QCOMPARE(found.userType(), expected.userType());
        QCOMPARE(found, expected);
    }
    QVERIFY(!theme->getClassValue(QStringLiteral("w"), QVariant()).isValid());
}

void tst_ThemeClassnames::getStyle_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *style, const char *classnames,
                        const char *expected) {
        QTest::newRow(name) << QString::fromUtf8(style) << QString::fromUtf8(classnames)
                            << QString::fromUtf8(expected);
    };
    row("plain", "Button", "", "plain");
    row("two spaces", "Button", "  ", "plain");
    row("variant", "Button", "primary", "primary");
    row("the last that has a variant wins", "Button", "primary danger", "danger");
    row("the last that has a variant wins, other order", "Button", "danger primary", "primary");
    row("a class without a variant is passed over", "Button", "primary muted", "primary");
    row("an empty variant is passed over", "Button", "primary hollow", "primary");
    row("no variant", "Button", "muted", "plain");
    row("many spaces", "Button", "  primary   muted ", "primary");
    row("letter case of classes counts", "Button", "Primary", "plain");
    row("letter case of styles counts", "button", "primary", "");
    row("a tab joins names", "Button", "x\tprimary", "plain");
    row("variant alone", "Card", "primary", "card");
    row("variant alone, other class", "Card", "muted", "");
    row("variant alone, no class", "Card", "", "");
    row("variant by its whole name", "Button_primary", "", "primary");
    row("unknown", "Nothing", "", "");
    row("empty style", "", "", "");
    row("empty style with a class", "", "x", "nameless");
    row("unicode", "Knöpfe", "名", "unicode");
}

void tst_ThemeClassnames::getStyle()
{
    QFETCH(QString, style);
    QFETCH(QString, classnames);
    QFETCH(QString, expected);

    Theme theme;
    dataOf(theme)->styles = {
        { QStringLiteral("Button"), QStringLiteral("plain") },
        { QStringLiteral("Button_primary"), QStringLiteral("primary") },
        { QStringLiteral("Button_danger"), QStringLiteral("danger") },
        { QStringLiteral("Button_hollow"), QString() },
        { QStringLiteral("Card_primary"), QStringLiteral("card") },
        { QStringLiteral("_x"), QStringLiteral("nameless") },
        { QStringLiteral("Knöpfe_名"), QStringLiteral("unicode") },
    };
    const int count = dataOf(theme)->styles.size();
    QCOMPARE(theme.getStyle(style, classnames), expected);
    // Looking up adds nothing.
    QCOMPARE(dataOf(theme)->styles.size(), count);
}

void tst_ThemeClassnames::getStyleIgnoresTheItemsClasses()
{
    Theme theme;
    dataOf(theme)->styles = { { QStringLiteral("Button"), QStringLiteral("plain") },
                              { QStringLiteral("Button_a"), QStringLiteral("variant") } };
    theme.setClassnames(QStringLiteral("a"));
    QCOMPARE(theme.getStyle(QStringLiteral("Button")), QStringLiteral("plain"));
    QCOMPARE(theme.getStyle(QStringLiteral("Card")), QString());
    QString style;
    QVERIFY(QMetaObject::invokeMethod(&theme, "getStyle",
                                      Q_RETURN_ARG(QString, style),
                                                   Q_ARG(QString, QStringLiteral("Button"))));
    QCOMPARE(style, QStringLiteral("plain"));
    QVERIFY(QMetaObject::invokeMethod(&theme, "getStyle",
                                      Q_RETURN_ARG(QString, style),
                                                   Q_ARG(QString, QStringLiteral("Button")),
                                                         Q_ARG(QString, QStringLiteral("a"))));
    QCOMPARE(style, QStringLiteral("variant"));
}

TAVOLINS_TEST_MAIN(tst_ThemeClassnames)
#include "tst_themeclassnames.moc"
