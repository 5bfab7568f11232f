#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/themevalues.h"
#include "values/themeobjectcolors.h"

#include <QtCore/QJsonArray>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtTest/QtTest>

#include <algorithm>
#include <iterator>

namespace {

const char *const names[] = {
    "foreground",        "lighterForeground", "darkerForeground", "background",
    "lighterBackground", "darkerBackground",  "selection",
};

const QStringList allSignals{
    QStringLiteral("foregroundChanged"),        QStringLiteral("lighterForegroundChanged"),
    QStringLiteral("darkerForegroundChanged"),  QStringLiteral("backgroundChanged"),
    QStringLiteral("lighterBackgroundChanged"), QStringLiteral("darkerBackgroundChanged"),
    QStringLiteral("selectionChanged"),
};

const char *const shadeNames[] = { "lighterForeground", "darkerForeground", "lighterBackground",
                                   "darkerBackground" };

typedef QHash<QByteArray, QColor> Changes;

QColor color(const ThemeObjectColors &colors, const char *name)
{
    return colors.property(name).value<QColor>();
}

QList<QColor> values(const ThemeObjectColors &colors)
{
    QList<QColor> list;
    for (const char *name : names)
        list.append(color(colors, name));
    return list;
}

/// Seven colors of which none is another one, nor a shade of another one.
void fill(ThemeObjectColors &colors)
{
    int green = 11;
    for (const char *name : names) {
        colors.setProperty(name, QColor(200, green, 31));
        green += 13;
    }
}

/// Gives each role of each group of the default palette a color of its own while it lives.
class DistinctPalette
{
public:
    explicit DistinctPalette(int alpha = 255)
    {
        QPalette palette;
        for (int group = 0; group < QPalette::NColorGroups; ++group) {
            for (int role = 0; role < QPalette::NColorRoles; ++role) {
                palette.setColor(QPalette::ColorGroup(group), QPalette::ColorRole(role),
                                 QColor(40 + 4 * role, 90 + 30 * group, 130, alpha));
            }
        }
        QGuiApplication::setPalette(palette);
    }
    ~DistinctPalette() { QGuiApplication::setPalette(m_previous); }

private:
    const QPalette m_previous;
};

} // namespace

class tst_ThemeObjectColors : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void newGroupHoldsInvalidColors();
    void defaultsComeFromThePalette();
    void defaultsKeepTheAlpha();
    void defaultsAnnounceOnlyWhatChanges();
    void accessorsAndPropertiesAreOne();
    void settersCompareStoreThenEmit();

    void assignmentAnnouncesInOrder();
    void assignmentAnnouncesOnlyWhatDiffers();
    void assigningAnEqualGroupEmitsNothing();
    void assigningAGroupToItself();
    void assignmentKeepsParentAndObjectName();
    void assignmentFromAHandlerStands();
    void groupDestroyedByAHandlerOfAnAssignment();

    void load_data();
    void load();
    void loadAnnouncesInOrder();
    void loadAnnouncesOnlyWhatChanges();
    void loadLeavesTheObjectAsItIs();
    void derivedShadesComeFromTheBaseReadBefore();
    void derivedShadesAreOpaque();
    void shadesOfAGroupWithoutColors();
    void groupDestroyedByAHandlerOfALoad();

    void colorForms_data();
    void colorForms();
    void nearMisses_data();
    void nearMisses();
    void wrongTypes_data();
    void wrongTypes();
};

void tst_ThemeObjectColors::newGroupHoldsInvalidColors()
{
    const ThemeObjectColors colors;
    for (const char *name : names)
        QVERIFY2(!color(colors, name).isValid(), name);
    QVERIFY(!colors.parent());
}

void tst_ThemeObjectColors::defaultsComeFromThePalette()
{
    const DistinctPalette distinct;
    const QPalette palette;
    const QColor &foreground = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor &background = palette.color(QPalette::Active, QPalette::Window);
    ThemeObjectColors colors;
    colors.initDefaults();
    // Lighter defaults use another factor than documents do.
    const QList<QColor> expected{
        foreground,
        foreground.lighter(150),
        foreground.darker(200),
        background,
        background.lighter(150),
        background.darker(200),
        palette.color(QPalette::Active, QPalette::HighlightedText),
    };
    QCOMPARE(values(colors), expected);
    QVERIFY(foreground.lighter(150) != foreground.lighter(200));
}

void tst_ThemeObjectColors::defaultsKeepTheAlpha()
{
    const DistinctPalette translucent(77);
    ThemeObjectColors colors;
    colors.initDefaults();
    for (const char *name : names)
        QVERIFY2(color(colors, name).alpha() == 77, name);
}

void tst_ThemeObjectColors::defaultsAnnounceOnlyWhatChanges()
{
    const DistinctPalette distinct;
    ThemeObjectColors colors;
    SignalRecorder recorder(&colors);
    colors.initDefaults();
    QCOMPARE(recorder.take(), allSignals);
    colors.initDefaults();
    QCOMPARE(recorder.take(), QStringList());

    colors.setDarkerBackground(Qt::magenta);
    colors.setForeground(Qt::magenta);
    recorder.take();
    colors.initDefaults();
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("foregroundChanged"),
                           QStringLiteral("darkerBackgroundChanged") }));
}

void tst_ThemeObjectColors::accessorsAndPropertiesAreOne()
{
    static const struct
    {
        const char *name;
        QColor (ThemeObjectColors::*get)() const;
        void (ThemeObjectColors::*set)(const QColor &);
        void (ThemeObjectColors::*changed)();
    } accessors[] = {
        { "foreground", &ThemeObjectColors::foreground, &ThemeObjectColors::setForeground,
          &ThemeObjectColors::foregroundChanged },
        { "lighterForeground", &ThemeObjectColors::lighterForeground,
          &ThemeObjectColors::setLighterForeground, &ThemeObjectColors::lighterForegroundChanged },
        { "darkerForeground", &ThemeObjectColors::darkerForeground,
          &ThemeObjectColors::setDarkerForeground, &ThemeObjectColors::darkerForegroundChanged },
        { "background", &ThemeObjectColors::background, &ThemeObjectColors::setBackground,
          &ThemeObjectColors::backgroundChanged },
        { "lighterBackground", &ThemeObjectColors::lighterBackground,
          &ThemeObjectColors::setLighterBackground, &ThemeObjectColors::lighterBackgroundChanged },
        { "darkerBackground", &ThemeObjectColors::darkerBackground,
          &ThemeObjectColors::setDarkerBackground, &ThemeObjectColors::darkerBackgroundChanged },
        { "selection", &ThemeObjectColors::selection, &ThemeObjectColors::setSelection,
          &ThemeObjectColors::selectionChanged },
    };
    ThemeObjectColors colors;
    fill(colors);
    for (const auto &accessor : accessors) {
        QList<QColor> expected = values(colors);
        QSignalSpy spy(&colors, accessor.changed);
        const QColor written(3, 5, int(&accessor - accessors));
        (colors.*accessor.set)(written);
        QCOMPARE(spy.count(), 1);
        QCOMPARE((colors.*accessor.get)(), written);
        expected[int(&accessor - accessors)] = written;
        QCOMPARE(values(colors), expected);
        QCOMPARE(color(colors, accessor.name), written);
    }
}

void tst_ThemeObjectColors::settersCompareStoreThenEmit()
{
    ThemeObjectColors colors;
    fill(colors);
    SignalRecorder recorder(&colors);
    colors.setForeground(colors.foreground());
    QCOMPARE(recorder.take(), QStringList());

    QColor seen;
    recorder.onSignal([&](const QString &) { seen = colors.foreground(); });
    colors.setForeground(Qt::cyan);
    QCOMPARE(seen, QColor(Qt::cyan));
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("foregroundChanged")));

    // The same look in another color model is another color.
    colors.setForeground(QColor(Qt::cyan).toHsv());
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("foregroundChanged")));
    colors.setForeground(QColor());
    QVERIFY(!colors.foreground().isValid());
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("foregroundChanged")));
}

void tst_ThemeObjectColors::assignmentAnnouncesInOrder()
{
    ThemeObjectColors source;
    fill(source);
    ThemeObjectColors colors;
    SignalRecorder recorder(&colors);
    SignalRecorder sourceRecorder(&source);
    QCOMPARE(&(colors = source), &colors);
    QCOMPARE(recorder.take(), allSignals);
    QCOMPARE(sourceRecorder.take(), QStringList());
    QCOMPARE(values(colors), values(source));
}

void tst_ThemeObjectColors::assignmentAnnouncesOnlyWhatDiffers()
{
    ThemeObjectColors source;
    fill(source);
    ThemeObjectColors colors;
    colors = source;
    source.setSelection(Qt::white);
    source.setLighterForeground(Qt::white);
    source.setBackground(Qt::white);
    SignalRecorder recorder(&colors);
    colors = source;
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("lighterForegroundChanged"),
                           QStringLiteral("backgroundChanged"),
                           QStringLiteral("selectionChanged") }));
    QCOMPARE(values(colors), values(source));
}

void tst_ThemeObjectColors::assigningAnEqualGroupEmitsNothing()
{
    ThemeObjectColors source;
    ThemeObjectColors colors;
    fill(source);
    fill(colors);
    SignalRecorder recorder(&colors);
    colors = source;
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeObjectColors::assigningAGroupToItself()
{
    ThemeObjectColors colors;
    fill(colors);
    const QList<QColor> before = values(colors);
    SignalRecorder recorder(&colors);
    const ThemeObjectColors &same = colors;
    colors = same;
    QCOMPARE(values(colors), before);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_ThemeObjectColors::assignmentKeepsParentAndObjectName()
{
    QObject parent;
    QObject otherParent;
    ThemeObjectColors *colors = new ThemeObjectColors(&parent);
    ThemeObjectColors *source = new ThemeObjectColors(&otherParent);
    colors->setObjectName(QStringLiteral("kept"));
    source->setObjectName(QStringLiteral("not taken"));
    *colors = *source;
    QCOMPARE(colors->parent(), &parent);
    QCOMPARE(colors->objectName(), QStringLiteral("kept"));
}

void tst_ThemeObjectColors::assignmentFromAHandlerStands()
{
    ThemeObjectColors first;
    fill(first);
    ThemeObjectColors second;
    second.initDefaults();
    ThemeObjectColors colors;
    bool assigned = false;
    connect(&colors, &ThemeObjectColors::backgroundChanged, &colors, [&] {
        if (!assigned) {
            assigned = true;
            colors = second;
        }
    });
    colors = first;
    QCOMPARE(values(colors), values(second));
}

void tst_ThemeObjectColors::groupDestroyedByAHandlerOfAnAssignment()
{
    ThemeObjectColors source;
    fill(source);
    const QPointer<ThemeObjectColors> colors(new ThemeObjectColors);
    connect(colors, &ThemeObjectColors::darkerForegroundChanged, this, [&] { delete colors; });
    *colors = source;
    QVERIFY(!colors);
}

void tst_ThemeObjectColors::load_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<bool>("deriveMissing");
    QTest::addColumn<Changes>("changes");

    const QColor red(255, 0, 0);
    // By factor 200, red runs over into white.
    const QColor lighterRed(255, 255, 255);
    const QColor darkerRed(127, 0, 0);
    const QColor own(1, 2, 3);
    ThemeObjectColors filled;
    fill(filled);
    const auto lighter = [](const QColor &base) { return QColor(base.lighter(200).name()); };
    const auto darker = [](const QColor &base) { return QColor(base.darker(200).name()); };
    const QColor foreground = filled.foreground();
    const QColor background = filled.background();

    // With derivation, shades are computed from the color in place also when the object leaves
    // the base color out.
    const Changes derived{ { "lighterForeground", lighter(foreground) },
                           { "darkerForeground", darker(foreground) },
                           { "lighterBackground", lighter(background) },
                           { "darkerBackground", darker(background) } };
    const auto derivedBut = [&](const Changes &changes) {
        Changes all = derived;
        for (auto change = changes.begin(); change != changes.end(); ++change)
            all.insert(change.key(), change.value());
        return all;
    };
    const auto row = [](const char *name, const char *object, bool deriveMissing,
                        const Changes &changes) {
        QTest::newRow(name) << QByteArray(object) << deriveMissing << changes;
    };

    row("only foreground, derived", R"({"foreground": "#ff0000"})", true,
        derivedBut({ { "foreground", red },
                     { "lighterForeground", lighterRed },
                     { "darkerForeground", darkerRed } }));
    row("only foreground, not derived", R"({"foreground": "#ff0000"})", false,
        { { "foreground", red } });
    row("only a lighter shade, derived", R"({"lighterForeground": "#010203"})", true,
        derivedBut({ { "lighterForeground", own } }));
    row("only a lighter shade, not derived", R"({"lighterForeground": "#010203"})", false,
        { { "lighterForeground", own } });
    row("only a darker shade, derived", R"({"darkerBackground": "#010203"})", true,
        derivedBut({ { "darkerBackground", own } }));
    row("a present shade wins, derived",
        R"({"foreground": "#ff0000", "lighterForeground": "#010203"})", true,
        derivedBut({ { "foreground", red },
                     { "lighterForeground", own },
                     { "darkerForeground", darkerRed } }));
    row("a present shade wins, not derived",
        R"({"foreground": "#ff0000", "lighterForeground": "#010203"})", false,
        { { "foreground", red }, { "lighterForeground", own } });
    row("only background, derived", R"({"background": "#ff0000"})", true,
        derivedBut({ { "background", red },
                     { "lighterBackground", lighterRed },
                     { "darkerBackground", darkerRed } }));
    row("only selection, derived", R"({"selection": "#010203"})", true,
        derivedBut({ { "selection", own } }));
    row("only selection, not derived", R"({"selection": "#010203"})", false,
        { { "selection", own } });
    row("shades of the selection, derived",
        R"({"lighterSelection": "#010203", "darkerSelection": "#010203"})", true, derived);
    row("shades of the selection, not derived",
        R"({"lighterSelection": "#010203", "darkerSelection": "#010203"})", false, {});
    row("foreground a number, derived", R"({"foreground": 255})", true, derived);
    row("foreground no color, derived", R"({"foreground": "no color"})", true, derived);
    row("foreground no color, not derived", R"({"foreground": "no color"})", false, {});
    row("a shade that is no color is not derived",
        R"({"foreground": "#ff0000", "lighterForeground": "no color"})", true, [&] {
            Changes changes = derivedBut(
                    { { "foreground", red }, { "darkerForeground", darkerRed } });
            changes.remove("lighterForeground");
            return changes;
        }());
    row("a null shade is not derived", R"({"lighterBackground": null})", true, [&] {
        Changes changes = derived;
        changes.remove("lighterBackground");
        return changes;
    }());
    row("empty, derived", "{}", true, derived);
    row("empty, not derived", "{}", false, {});
    row("letter case of names counts",
        R"({"Foreground": "#010203", "lighterforeground": "#010203", "SELECTION": "#010203"})",
        false, {});
    row("unknown members",
        R"({"highlight": "#010203", "objectName": "x", "": "#010203", "lighter": "#010203"})",
        false, {});
    row("all seven", R"({"selection": "#000007", "darkerBackground": "#000006",
            "lighterBackground": "#000005", "background": "#000004", "darkerForeground": "#000003",
            "lighterForeground": "#000002", "foreground": "#000001"})",
        true,
        { { "foreground", QColor(0, 0, 1) },
          { "lighterForeground", QColor(0, 0, 2) },
          { "darkerForeground", QColor(0, 0, 3) },
          { "background", QColor(0, 0, 4) },
          { "lighterBackground", QColor(0, 0, 5) },
          { "darkerBackground", QColor(0, 0, 6) },
          { "selection", QColor(0, 0, 7) } });
}

void tst_ThemeObjectColors::load()
{
    QFETCH(QByteArray, object);
    QFETCH(bool, deriveMissing);
    QFETCH(Changes, changes);

    ThemeObjectColors colors;
    fill(colors);
    colors.setObjectName(QStringLiteral("kept"));
    QHash<QByteArray, QColor> expected;
    for (const char *name : names)
        expected.insert(name, changes.value(name, color(colors, name)));
    QJsonObject members = parsed(object);
    colors.load(members, deriveMissing);
    for (const char *name : names) {
        const QColor value = color(colors, name);
        QVERIFY2(value == expected.value(name),
                 qPrintable(QLatin1String(name) + QLatin1String(" is ") + value.name()));
    }
    QCOMPARE(colors.objectName(), QStringLiteral("kept"));
    QVERIFY(colors.dynamicPropertyNames().isEmpty());
}

void tst_ThemeObjectColors::loadAnnouncesInOrder()
{
    ThemeObjectColors colors;
    SignalRecorder recorder(&colors);
    // JSON objects are sorted by key; the signals are not.
    QJsonObject object = parsed(R"({"background": "navy", "darkerBackground": "olive",
            "darkerForeground": "lime", "foreground": "aqua", "lighterBackground": "gray",
            "lighterForeground": "plum", "selection": "pink"})");
    colors.load(object, false);
    QCOMPARE(recorder.take(), allSignals);

    ThemeObjectColors derived;
    SignalRecorder derivedRecorder(&derived);
    QJsonObject bases = parsed(
            R"({"selection": "pink", "foreground": "#336699", "background": "#225522"})");
    derived.load(bases, true);
    QCOMPARE(derivedRecorder.take(), allSignals);
}

void tst_ThemeObjectColors::loadAnnouncesOnlyWhatChanges()
{
    ThemeObjectColors colors;
    QJsonObject object = parsed(R"({"foreground": "#336699", "background": "#225522"})");
    colors.load(object, true);
    SignalRecorder recorder(&colors);
    colors.load(object, true);
    QCOMPARE(recorder.take(), QStringList());

    object.insert(QStringLiteral("foreground"), QStringLiteral("#993366"));
    colors.load(object, true);
    QCOMPARE(recorder.take(),
             QStringList({ QStringLiteral("foregroundChanged"),
                           QStringLiteral("lighterForegroundChanged"),
                           QStringLiteral("darkerForegroundChanged") }));
    object.insert(QStringLiteral("background"), QStringLiteral("#552222"));
    colors.load(object, false);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("backgroundChanged")));
}

void tst_ThemeObjectColors::loadLeavesTheObjectAsItIs()
{
    ThemeObjectColors colors;
    fill(colors);
    QJsonObject object = parsed(R"({"foreground": "red", "lighterBackground": 7})");
    const QJsonObject before = object;
    colors.load(object, true);
    QCOMPARE(object, before);
}

void tst_ThemeObjectColors::derivedShadesComeFromTheBaseReadBefore()
{
    ThemeObjectColors colors;
    colors.initDefaults();
    const QColor own(0x30, 0x60, 0x90);
    QJsonObject object = parsed(R"({"foreground": "#306090", "background": "#204060"})");
    colors.load(object, true);
    QCOMPARE(colors.foreground(), own);
    QCOMPARE(colors.lighterForeground(), QColor(own.lighter(200).name()));
    QCOMPARE(colors.darkerForeground(), QColor(0x18, 0x30, 0x48));
    QCOMPARE(colors.darkerBackground(), QColor(0x10, 0x20, 0x30));
    // Documents lighten more than the defaults do.
    QVERIFY(colors.lighterForeground() != QColor(own.lighter(150).name()));
}

void tst_ThemeObjectColors::derivedShadesAreOpaque()
{
    ThemeObjectColors colors;
    colors.initDefaults();
    QJsonObject object = parsed(R"({"foreground": "#40306090", "background": "transparent"})");
    colors.load(object, true);
    QCOMPARE(colors.foreground().alpha(), 0x40);
    QCOMPARE(colors.lighterForeground().alpha(), 255);
    QCOMPARE(colors.darkerForeground().alpha(), 255);
    QCOMPARE(colors.darkerForeground(), QColor(0x18, 0x30, 0x48));
    QCOMPARE(colors.background().alpha(), 0);
    QCOMPARE(colors.lighterBackground(), QColor(0, 0, 0));
    QCOMPARE(colors.darkerBackground(), QColor(0, 0, 0));
}

void tst_ThemeObjectColors::shadesOfAGroupWithoutColors()
{
    ThemeObjectColors colors;
    QJsonObject object;
    colors.load(object, true);
    QVERIFY(!colors.foreground().isValid());
    QVERIFY(!colors.background().isValid());
    QVERIFY(!colors.selection().isValid());
    for (const char *name : shadeNames)
        QVERIFY2(color(colors, name) == QColor(0, 0, 0), name);
}

void tst_ThemeObjectColors::groupDestroyedByAHandlerOfALoad()
{
    const QPointer<ThemeObjectColors> colors(new ThemeObjectColors);
    connect(colors, &ThemeObjectColors::lighterForegroundChanged, this, [&] { delete colors; });
    QJsonObject object = parsed(R"({"foreground": "red", "background": "blue"})");
    colors->load(object, true);
    QVERIFY(!colors);
}

void tst_ThemeObjectColors::colorForms_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("expected");

    const auto row = [](const char *name, const char *text, const QColor &expected) {
        QTest::newRow(name) << QString::fromUtf8(text) << expected;
    };
    row("3 digits", "#1af", QColor(0x11, 0xaa, 0xff));
    row("6 digits", "#1a2b3c", QColor(0x1a, 0x2b, 0x3c));
    row("6 digits in upper case", "#1A2B3C", QColor(0x1a, 0x2b, 0x3c));
    row("8 digits, alpha first", "#801a2b3c", QColor(0x1a, 0x2b, 0x3c, 0x80));
    row("8 digits, opaque", "#ff1a2b3c", QColor(0x1a, 0x2b, 0x3c));
    row("8 digits, fully transparent", "#001a2b3c", QColor(0x1a, 0x2b, 0x3c, 0));
    row("9 digits", "#1af2be3cd", QColor::fromRgba64(0x1af1, 0x2be2, 0x3cd3));
    row("12 digits", "#1a1a2b2b3c3c", QColor::fromRgba64(0x1a1a, 0x2b2b, 0x3c3c));
    row("12 digits, more than 8 bits", "#1234abcd5678", QColor::fromRgba64(0x1234, 0xabcd, 0x5678));
    row("keyword", "tomato", QColor(255, 99, 71));
    row("keyword, other letter case", "ToMaTo", QColor(255, 99, 71));
    row("keyword with blanks", " light Sea\tGreen ", QColor(32, 178, 170));
    row("grey with e", "lightgrey", QColor(211, 211, 211));
    row("gray with a", "lightgray", QColor(211, 211, 211));
    row("transparent", "transparent", QColor(0, 0, 0, 0));
    row("first keyword", "aliceblue", QColor(240, 248, 255));
    row("last keyword", "yellowgreen", QColor(154, 205, 50));
}

void tst_ThemeObjectColors::colorForms()
{
    QFETCH(QString, text);
    QFETCH(QColor, expected);

    for (const char *name : names) {
        ThemeObjectColors colors;
        fill(colors);
        QList<QColor> all = values(colors);
        all[int(std::find(std::begin(names), std::end(names), name) - std::begin(names))] =
                expected;
        QJsonObject object{ { QLatin1String(name), text } };
        SignalRecorder recorder(&colors);
        colors.load(object, false);
        QCOMPARE(values(colors), all);
        QCOMPARE(recorder.take(), QStringList(QLatin1String(name) + QLatin1String("Changed")));
    }
}

void tst_ThemeObjectColors::nearMisses_data()
{
    QTest::addColumn<QString>("text");

    const auto row = [](const char *name, const char *text) {
        QTest::newRow(name) << QString::fromUtf8(text);
    };
    row("empty", "");
    row("only blanks", "   ");
    row("only the hash sign", "#");
    row("1 digit", "#1");
    row("2 digits", "#12");
    row("4 digits", "#1234");
    row("5 digits", "#12345");
    row("7 digits", "#1234567");
    row("10 digits", "#1234567890");
    row("11 digits", "#12345678901");
    row("13 digits", "#1234567890123");
    row("16 digits", "#1234567890123456");
    row("not hexadecimal", "#ggg");
    row("last digit not hexadecimal", "#12345g");
    row("signed digits", "#-1-1-1");
    row("digits without the hash sign", "ff0000");
    row("C form", "0xff0000");
    row("two hash signs", "##ff0000");
    row("blank before the hash sign", " #ff0000");
    row("blank after the digits", "#ff0000 ");
    row("function", "rgb(255, 0, 0)");
    row("unknown keyword", "reddish");
    row("keyword and more", "red;");
    row("two keywords", "red blue");
    row("not Latin", "röt");
    row("full-width digits", "#ff\xef\xbc\x90\xef\xbc\x90\xef\xbc\x90\xef\xbc\x90");
    row("Qt's name of an enumerator", "Qt::red");
    row("newline in a keyword", "re\nd");
    QTest::newRow("very long") << QString(100000, QLatin1Char('a'));
    QTest::newRow("very long number") << QLatin1Char('#') + QString(100000, QLatin1Char('f'));
    QTest::newRow("null character") << QString(QChar(0)) + QStringLiteral("red");
}

void tst_ThemeObjectColors::nearMisses()
{
    QFETCH(QString, text);

    for (const char *name : names) {
        ThemeObjectColors colors;
        fill(colors);
        const QList<QColor> before = values(colors);
        QJsonObject object{ { QLatin1String(name), text } };
        SignalRecorder recorder(&colors);
        colors.load(object, false);
        QCOMPARE(values(colors), before);
        QCOMPARE(recorder.take(), QStringList());
    }
}

void tst_ThemeObjectColors::wrongTypes_data()
{
    QTest::addColumn<QJsonValue>("value");

    QTest::newRow("null") << QJsonValue(QJsonValue::Null);
    QTest::newRow("true") << QJsonValue(true);
    QTest::newRow("false") << QJsonValue(false);
    QTest::newRow("zero") << QJsonValue(0);
    QTest::newRow("negative") << QJsonValue(-1);
    QTest::newRow("huge") << QJsonValue(1e308);
    QTest::newRow("number that is a global color") << QJsonValue(int(Qt::red));
    QTest::newRow("array") << QJsonValue(QJsonArray{ QStringLiteral("red") });
    QTest::newRow("array of parts") << QJsonValue(QJsonArray{ 255, 0, 0 });
    QTest::newRow("object") << QJsonValue(
            QJsonObject{ { QStringLiteral("color"), QStringLiteral("red") } });
}

void tst_ThemeObjectColors::wrongTypes()
{
    QFETCH(QJsonValue, value);

    for (const char *name : names) {
        ThemeObjectColors colors;
        fill(colors);
        const QList<QColor> before = values(colors);
        QJsonObject object{ { QLatin1String(name), value } };
        SignalRecorder recorder(&colors);
        colors.load(object, false);
        QCOMPARE(values(colors), before);
        QCOMPARE(recorder.take(), QStringList());
    }
}

TAVOLINS_TEST_MAIN(tst_ThemeObjectColors)
#include "tst_themeobjectcolors.moc"
