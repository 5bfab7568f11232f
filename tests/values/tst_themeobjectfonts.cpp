#include "support/fontdatabase.h"
#include "support/signalrecorder.h"
#include "support/testcase.h"
#include "support/testfont.h"
#include "support/themevalues.h"
#include "values/themeobjectfonts.h"

#include <QtCore/QJsonArray>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

const char *const names[] = { "mainFont", "alternateFont", "h1Font", "h2Font", "h3Font", "h4Font" };
const char *const members[] = { "main", "alternate", "h1", "h2", "h3", "h4" };

const QStringList allSignals{
    QStringLiteral("mainFontChanged"), QStringLiteral("alternateFontChanged"),
    QStringLiteral("h1FontChanged"),   QStringLiteral("h2FontChanged"),
    QStringLiteral("h3FontChanged"),   QStringLiteral("h4FontChanged"),
};

QFont font(const ThemeObjectFonts &fonts, const char *name)
{
    return fonts.property(name).value<QFont>();
}

QList<QFont> values(const ThemeObjectFonts &fonts)
{
    QList<QFont> list;
    for (const char *name : names)
        list.append(font(fonts, name));
    return list;
}

QList<double> sizes(const ThemeObjectFonts &fonts)
{
    QList<double> list;
    for (const char *name : names)
        list.append(font(fonts, name).pointSizeF());
    return list;
}

QStringList families(const ThemeObjectFonts &fonts)
{
    QStringList list;
    for (const char *name : names)
        list.append(font(fonts, name).family());
    return list;
}

/// Six fonts that all differ.
void fill(ThemeObjectFonts &fonts)
{
    double size = 20;
    for (const char *name : names)
        fonts.setProperty(name, QFont(QLatin1String(name), int(size++)));
}

/// A base font with nothing left at its default.
QFont unusualFont()
{
    QFont base(QStringLiteral("Base Family"));
    base.setPointSizeF(40);
    base.setWeight(QFont::DemiBold);
    base.setStyle(QFont::StyleOblique);
    base.setCapitalization(QFont::SmallCaps);
    base.setLetterSpacing(QFont::AbsoluteSpacing, 2.5);
    base.setStretch(150);
    base.setUnderline(true);
    base.setStrikeOut(true);
    base.setKerning(false);
    base.setWordSpacing(3);
    base.setFixedPitch(true);
    base.setHintingPreference(QFont::PreferNoHinting);
    return base;
}

/// Makes \a font the application's font while it lives.
class ApplicationFont
{
public:
    explicit ApplicationFont(const QFont &font) { QGuiApplication::setFont(font); }
    ~ApplicationFont() { QGuiApplication::setFont(m_previous); }

private:
    const QFont m_previous = QGuiApplication::font();
};

} // namespace

class tst_ThemeObjectFonts : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void newGroupHoldsTheApplicationFont();
    void defaultsAnnounceOnlyWhatChanges();
    void accessorsAndPropertiesAreOne();
    void settersCompareStoreThenEmit();
    void factorIsFixed();

    void assignmentAnnouncesInOrder();
    void assignmentAnnouncesOnlyWhatDiffers();
    void assigningAnEqualGroupEmitsNothing();
    void assignmentKeepsParentAndObjectName();
    void assignmentFromAHandlerStands();
    void groupDestroyedByAHandlerOfAnAssignment();

    void loadedSizes_data();
    void loadedSizes();
    void loadedFamilies_data();
    void loadedFamilies();
    void mainIsReadFromAFreshFont();
    void onlyH1RebuildsAllFonts();
    void alternateIsReadOnTheFormerAlternate();
    void headingsAreReadOnTheNewMain();
    void leftOutFontsCarryEverythingButTheSize();
    void flagHasNoEffect();
    void missingMembersAreAddedAsNull();
    void loadAnnouncesInOrder();
    void loadAnnouncesOnlyWhatChanges();
    void groupDestroyedByAHandlerOfALoad_data();
    void groupDestroyedByAHandlerOfALoad();
    void membersOfTheWrongType_data();
    void membersOfTheWrongType();
    void applicationFontWithAPixelSize();

    void emptyDescription();
    void descriptionReplacesTheBase();
    void family_data();
    void family();
    void pointSize_data();
    void pointSize();
    void hugeSizesOfHeadings();
    void boldHasNoEffect_data();
    void boldHasNoEffect();
    void italic_data();
    void italic();
    void capitalization_data();
    void capitalization();
    void letterSpacing_data();
    void letterSpacing();
    void weight_data();
    void weight();
    void weightIsAStyleOfTheFamilyInTheDescription();
    void descriptionIsCaseSensitive();
};

void tst_ThemeObjectFonts::initTestCase()
{
    // The font database answers for styles of families that are sure to be there.
    const QByteArray content = TestFont::content();
    QVERIFY2(!content.isEmpty(), "DejaVu Sans (package fonts-dejavu-core) is not installed");
    QVERIFY(QFontDatabase::addApplicationFontFromData(content) != -1);
    QCOMPARE(FontDatabase::weight(QStringLiteral("DejaVu Sans"), QStringLiteral("Bold")),
             int(QFont::Bold));
    QCOMPARE(FontDatabase::weight(TestFont::family(), QStringLiteral("Bold")), -1);
    QCOMPARE(FontDatabase::weight(TestFont::family(), QStringLiteral("Book")), int(QFont::Normal));
}

void tst_ThemeObjectFonts::newGroupHoldsTheApplicationFont()
{
    const ApplicationFont applicationFont(QFont(QStringLiteral("Serif"), 31));
    const ThemeObjectFonts fonts;
    for (const char *name : names)
        QVERIFY2(font(fonts, name) == QFont(QStringLiteral("Serif"), 31), name);
    QVERIFY(qFuzzyCompare(fonts.fontFactor(), 0.75));
    QVERIFY(!fonts.parent());
}

void tst_ThemeObjectFonts::defaultsAnnounceOnlyWhatChanges()
{
    ThemeObjectFonts fonts;
    SignalRecorder recorder(&fonts);
    fonts.initDefaults();
    QCOMPARE(recorder.take(), QStringList());

    fill(fonts);
    recorder.take();
    fonts.initDefaults();
    QCOMPARE(recorder.take(), allSignals);
    for (const char *name : names)
        QVERIFY2(font(fonts, name) == QFont(), name);

    fonts.setH3Font(unusualFont());
    recorder.take();
    fonts.initDefaults();
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("h3FontChanged")));
    QVERIFY(qFuzzyCompare(fonts.fontFactor(), 0.75));
}

void tst_ThemeObjectFonts::accessorsAndPropertiesAreOne()
{
    static const struct
    {
        const char *name;
        QFont (ThemeObjectFonts::*get)() const;
        void (ThemeObjectFonts::*set)(const QFont &);
        void (ThemeObjectFonts::*changed)();
    } accessors[] = {
        { "mainFont", &ThemeObjectFonts::mainFont, &ThemeObjectFonts::setMainFont,
          &ThemeObjectFonts::mainFontChanged },
        { "alternateFont", &ThemeObjectFonts::alternateFont, &ThemeObjectFonts::setAlternateFont,
          &ThemeObjectFonts::alternateFontChanged },
        { "h1Font", &ThemeObjectFonts::h1Font, &ThemeObjectFonts::setH1Font,
          &ThemeObjectFonts::h1FontChanged },
        { "h2Font", &ThemeObjectFonts::h2Font, &ThemeObjectFonts::setH2Font,
          &ThemeObjectFonts::h2FontChanged },
        { "h3Font", &ThemeObjectFonts::h3Font, &ThemeObjectFonts::setH3Font,
          &ThemeObjectFonts::h3FontChanged },
        { "h4Font", &ThemeObjectFonts::h4Font, &ThemeObjectFonts::setH4Font,
          &ThemeObjectFonts::h4FontChanged },
    };
    ThemeObjectFonts fonts;
    fill(fonts);
    for (const auto &accessor : accessors) {
        QList<QFont> expected = values(fonts);
        QSignalSpy spy(&fonts, accessor.changed);
        const QFont written(QStringLiteral("Written"), 3 + int(&accessor - accessors));
        (fonts.*accessor.set)(written);
        QCOMPARE(spy.count(), 1);
        QCOMPARE((fonts.*accessor.get)(), written);
        expected[int(&accessor - accessors)] = written;
        QCOMPARE(values(fonts), expected);
        QCOMPARE(font(fonts, accessor.name), written);
    }
}

void tst_ThemeObjectFonts::settersCompareStoreThenEmit()
{
    ThemeObjectFonts fonts;
    fill(fonts);
    SignalRecorder recorder(&fonts);
    fonts.setH1Font(fonts.h1Font());
    QCOMPARE(recorder.take(), QStringList());

    QFont seen;
    recorder.onSignal([&](const QString &) { seen = fonts.h1Font(); });
    fonts.setH1Font(unusualFont());
    QCOMPARE(seen, unusualFont());
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("h1FontChanged")));
}

void tst_ThemeObjectFonts::factorIsFixed()
{
    ThemeObjectFonts fonts;
    SignalRecorder recorder(&fonts);
    QVERIFY(!fonts.setProperty("fontFactor", 2.0));
    fonts.initDefaults();
    QJsonObject object = parsed(R"({"fontFactor": 2, "main": {"pointSize": 16}})");
    fonts.load(object, true);
    ThemeObjectFonts other;
    fonts = other;
    QVERIFY(qFuzzyCompare(fonts.fontFactor(), 0.75));
    QCOMPARE(recorder.take().count(QStringLiteral("fontFactorChanged")), 0);
}

void tst_ThemeObjectFonts::assignmentAnnouncesInOrder()
{
    ThemeObjectFonts source;
    fill(source);
    ThemeObjectFonts fonts;
    SignalRecorder recorder(&fonts);
    SignalRecorder sourceRecorder(&source);
    QCOMPARE(&(fonts = source), &fonts);
    QCOMPARE(recorder.take(), allSignals);
    QCOMPARE(sourceRecorder.take(), QStringList());
    QCOMPARE(values(fonts), values(source));
}

void tst_ThemeObjectFonts::assignmentAnnouncesOnlyWhatDiffers()
{
    ThemeObjectFonts source;
    fill(source);
    ThemeObjectFonts fonts;
    fonts = source;
    source.setH4Font(unusualFont());
    source.setAlternateFont(unusualFont());
    SignalRecorder recorder(&fonts);
    fonts = source;
    QCOMPARE(recorder.take(),
             QStringList(
                     { QStringLiteral("alternateFontChanged"), QStringLiteral("h4FontChanged") }));
    QCOMPARE(values(fonts), values(source));
}

void tst_ThemeObjectFonts::assigningAnEqualGroupEmitsNothing()
{
    ThemeObjectFonts source;
    ThemeObjectFonts fonts;
    fill(source);
    fill(fonts);
    SignalRecorder recorder(&fonts);
    fonts = source;
    const ThemeObjectFonts &same = fonts;
    fonts = same;
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(values(fonts), values(source));
    QVERIFY(qFuzzyCompare(fonts.fontFactor(), 0.75));
}

void tst_ThemeObjectFonts::assignmentKeepsParentAndObjectName()
{
    QObject parent;
    QObject otherParent;
    ThemeObjectFonts *fonts = new ThemeObjectFonts(&parent);
    ThemeObjectFonts *source = new ThemeObjectFonts(&otherParent);
    fonts->setObjectName(QStringLiteral("kept"));
    source->setObjectName(QStringLiteral("not taken"));
    *fonts = *source;
    QCOMPARE(fonts->parent(), &parent);
    QCOMPARE(fonts->objectName(), QStringLiteral("kept"));
}

void tst_ThemeObjectFonts::assignmentFromAHandlerStands()
{
    ThemeObjectFonts first;
    fill(first);
    const ThemeObjectFonts second;
    ThemeObjectFonts fonts;
    bool assigned = false;
    connect(&fonts, &ThemeObjectFonts::h2FontChanged, &fonts, [&] {
        if (!assigned) {
            assigned = true;
            fonts = second;
        }
    });
    fonts = first;
    QCOMPARE(values(fonts), values(second));
}

void tst_ThemeObjectFonts::groupDestroyedByAHandlerOfAnAssignment()
{
    ThemeObjectFonts source;
    fill(source);
    const QPointer<ThemeObjectFonts> fonts(new ThemeObjectFonts);
    connect(fonts, &ThemeObjectFonts::h1FontChanged, this, [&] { delete fonts; });
    *fonts = source;
    QVERIFY(!fonts);
}

void tst_ThemeObjectFonts::loadedSizes_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QList<double>>("expected");

    const auto row = [](const char *name, const char *object, const QList<double> &expected) {
        QTest::newRow(name) << QByteArray(object) << expected;
    };
    // The application's font has 10 points here.
    row("only main of 16", R"({"main": {"pointSize": 16}})", { 12, 12, 17, 16, 15, 13 });
    row("only main of 15, two headings cut", R"({"main": {"pointSize": 15}})",
        { 11.25, 11.25, 16.25, 15.25, 14, 12 });
    row("only main, fraction near the next point", R"({"main": {"pointSize": 15.9}})",
        { 11.925, 11.925, 16.925, 15.925, 14, 12 });
    row("main without a size", R"({"main": {"italic": true}})", { 7.5, 7.5, 12.5, 11.5, 10, 8 });
    row("empty", "{}", { 7.5, 7.5, 12.5, 11.5, 10, 8 });
    row("size as text", R"({"main": {"pointSize": "16"}})", { 7.5, 7.5, 12.5, 11.5, 10, 8 });
    row("empty descriptions",
        R"({"main": {}, "alternate": {}, "h1": {}, "h2": {}, "h3": {}, "h4": {}})",
        { 7.5, 7.5, 12.5, 11.5, 10, 8 });
    row("only h1", R"({"h1": {"family": "Other"}})", { 7.5, 7.5, 5.625, 11.5, 10, 8 });
    row("headings without sizes scale the main font's",
        R"({"main": {"pointSize": 16}, "h1": {"italic": true}, "h2": {"italic": true},
            "h3": {"italic": true}, "h4": {"italic": true}})",
        { 12, 12, 9, 9, 9, 9 });
    row("alternate without a size scales the former alternate's",
        R"({"main": {"pointSize": 16}, "alternate": {"italic": true}})",
        { 12, 15.75, 17, 16, 15, 13 });
    row("alternate of 40", R"({"main": {"pointSize": 16}, "alternate": {"pointSize": 40}})",
        { 12, 30, 17, 16, 15, 13 });
    row("all given",
        R"({"main": {"pointSize": 8}, "alternate": {"pointSize": 12}, "h1": {"pointSize": 16},
            "h2": {"pointSize": 20}, "h3": {"pointSize": 25}, "h4": {"pointSize": 30}})",
        { 6, 9, 12, 15, 18.75, 22.5 });
    row("h2 given, h3 from main", R"({"main": {"pointSize": 16}, "h2": {"pointSize": 40}})",
        { 12, 12, 17, 30, 15, 13 });
}

void tst_ThemeObjectFonts::loadedSizes()
{
    QFETCH(QByteArray, object);
    QFETCH(QList<double>, expected);

    const ApplicationFont applicationFont(QFont(QStringLiteral("Serif"), 10));
    ThemeObjectFonts fonts;
    fill(fonts);
    QJsonObject read = parsed(object);
    fonts.load(read, true);
    QCOMPARE(sizes(fonts), expected);
}

void tst_ThemeObjectFonts::loadedFamilies_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *object, const char *expected) {
        QTest::newRow(name) << QByteArray(object) << QString::fromLatin1(expected);
    };
    row("only main", R"({"main": {"family": "Main"}})", "Main Main Main Main Main Main");
    row("main and alternate", R"({"main": {"family": "Main"}, "alternate": {"family": "Alt"}})",
        "Main Alt Alt Alt Alt Alt");
    row("only alternate", R"({"alternate": {"family": "Alt"}})", "App Alt Alt Alt Alt Alt");
    row("only h1", R"({"h1": {"family": "One"}})", "App App One One One One");
    row("h2 breaks the chain",
        R"({"main": {"family": "Main"}, "alternate": {"family": "Alt"}, "h2": {"pointSize": 9}})",
        "Main Alt Alt Main Main Main");
    row("h1 and h3", R"({"h1": {"family": "One"}, "h3": {"family": "Three"}})",
        "App App One One Three Three");
    row("only h4", R"({"h4": {"family": "Four"}})", "App App App App App Four");
    row("alternate keeps its family", R"({"alternate": {"pointSize": 9}})",
        "App alternateFont alternateFont alternateFont alternateFont alternateFont");
    row("empty", "{}", "App App App App App App");
}

void tst_ThemeObjectFonts::loadedFamilies()
{
    QFETCH(QByteArray, object);
    QFETCH(QString, expected);

    const ApplicationFont applicationFont(QFont(QStringLiteral("App"), 10));
    ThemeObjectFonts fonts;
    fill(fonts);
    QJsonObject read = parsed(object);
    fonts.load(read, false);
    QCOMPARE(families(fonts).join(QLatin1Char(' ')), expected);
}

void tst_ThemeObjectFonts::mainIsReadFromAFreshFont()
{
    ThemeObjectFonts fonts;
    fonts.setMainFont(unusualFont());
    QJsonObject object = parsed(R"({"main": {"letterSpacing": 1}})");
    fonts.load(object, true);
    const QFont main = fonts.mainFont();
    QCOMPARE(main.family(), QFont().family());
    QCOMPARE(main.pointSizeF(), QFont().pointSizeF() * 0.75);
    QCOMPARE(main.weight(), QFont().weight());
    QCOMPARE(main.style(), QFont().style());
    QCOMPARE(main.capitalization(), QFont::MixedCase);
    QCOMPARE(main.letterSpacing(), 1.0);
}

void tst_ThemeObjectFonts::onlyH1RebuildsAllFonts()
{
    ThemeObjectFonts fonts;
    for (const char *name : names)
        fonts.setProperty(name, unusualFont());
    QJsonObject object = parsed(
            R"({"h1": {"family": "One", "italic": true, "capitalization": "smallCaps"}})");
    fonts.load(object, false);

    QFont main;
    main.setPointSizeF(QFont().pointSizeF() * 0.75);
    main.setLetterSpacing(QFont::AbsoluteSpacing, QFont().letterSpacing());
    QCOMPARE(fonts.mainFont().family(), QFont().family());
    QCOMPARE(fonts.mainFont(), main);
    QCOMPARE(fonts.alternateFont(), main);
    for (const char *name : { "h1Font", "h2Font", "h3Font", "h4Font" }) {
        const QFont heading = font(fonts, name);
        QVERIFY2(heading.family() == QLatin1String("One"), name);
        QVERIFY2(heading.style() == QFont::StyleItalic, name);
        QVERIFY2(heading.capitalization() == QFont::SmallCaps, name);
    }
    QCOMPARE(fonts.h2Font().pointSizeF(), main.pointSizeF() + 4);
    QCOMPARE(fonts.h3Font().pointSize(), int(main.pointSizeF() + 3));
    QCOMPARE(fonts.h4Font().pointSize(), int(main.pointSizeF() + 1));
}

void tst_ThemeObjectFonts::alternateIsReadOnTheFormerAlternate()
{
    ThemeObjectFonts fonts;
    fonts.setAlternateFont(unusualFont());
    QJsonObject object = parsed(R"({"main": {"family": "Main"}, "alternate": {"bold": false}})");
    fonts.load(object, true);
    QCOMPARE(fonts.alternateFont().family(), QStringLiteral("Base Family"));
    QCOMPARE(fonts.alternateFont().pointSizeF(), 30.0);
    QCOMPARE(int(fonts.alternateFont().weight()), int(QFont::DemiBold));
    QCOMPARE(fonts.alternateFont().style(), QFont::StyleItalic);
    // Read again, the description scales what it has made of the alternate font before.
    fonts.load(object, true);
    QCOMPARE(fonts.alternateFont().pointSizeF(), 22.5);
}

void tst_ThemeObjectFonts::headingsAreReadOnTheNewMain()
{
    for (const char *member : { "h1", "h2", "h3", "h4" }) {
        ThemeObjectFonts fonts;
        fill(fonts);
        QJsonObject object = parsed(R"({"main": {"family": "Main", "pointSize": 32,
                "italic": true, "letterSpacing": 4}, "alternate": {"family": "Alt"}})");
        object.insert(QLatin1String(member), parsed(R"({"capitalization": "capitalize"})"));
        fonts.load(object, true);
        const QFont heading = font(fonts, (QByteArray(member) + "Font").constData());
        QCOMPARE(heading.family(), QStringLiteral("Main"));
        QCOMPARE(heading.pointSizeF(), 18.0);
        QCOMPARE(heading.style(), QFont::StyleItalic);
        QCOMPARE(heading.letterSpacing(), 4.0);
        QCOMPARE(heading.capitalization(), QFont::Capitalize);
    }
}

void tst_ThemeObjectFonts::leftOutFontsCarryEverythingButTheSize()
{
    ThemeObjectFonts fonts;
    QJsonObject object = parsed(R"({"main": {"pointSize": 16}, "alternate": {
            "family": "DejaVu Sans", "weight": "Bold", "italic": true, "letterSpacing": 4,
            "capitalization": "allUppercase", "pointSize": 60}})");
    fonts.load(object, true);
    for (const char *name : { "h1Font", "h2Font", "h3Font", "h4Font" }) {
        QFont expected = fonts.alternateFont();
        expected.setPointSizeF(font(fonts, name).pointSizeF());
        QVERIFY2(font(fonts, name) == expected, name);
    }
    QCOMPARE(fonts.h4Font().weight(), int(QFont::Bold));
    QCOMPARE(fonts.h4Font().capitalization(), QFont::AllUppercase);
    QCOMPARE(sizes(fonts), QList<double>({ 12, 45, 17, 16, 15, 13 }));
}

void tst_ThemeObjectFonts::flagHasNoEffect()
{
    ThemeObjectFonts with;
    ThemeObjectFonts without;
    QJsonObject object = parsed(R"({"main": {"pointSize": 16}, "h2": {"family": "Two"}})");
    with.load(object, true);
    without.load(object, false);
    QCOMPARE(values(with), values(without));
}

void tst_ThemeObjectFonts::missingMembersAreAddedAsNull()
{
    ThemeObjectFonts fonts;
    QJsonObject object = parsed(R"({"h1": {"family": "One"}, "h2": 7, "own": true})");
    fonts.load(object, true);
    QCOMPARE(object, parsed(R"({"main": null, "alternate": null, "h1": {"family": "One"}, "h2": 7,
            "h3": null, "h4": null, "own": true})"));
}

void tst_ThemeObjectFonts::loadAnnouncesInOrder()
{
    ThemeObjectFonts fonts;
    SignalRecorder recorder(&fonts);
    QJsonObject object = parsed(R"({"main": {"pointSize": 44}})");
    fonts.load(object, true);
    QCOMPARE(recorder.take(), allSignals);
}

void tst_ThemeObjectFonts::loadAnnouncesOnlyWhatChanges()
{
    ThemeObjectFonts fonts;
    QJsonObject object = parsed(R"({"main": {"pointSize": 44}})");
    fonts.load(object, true);
    SignalRecorder recorder(&fonts);
    fonts.load(object, true);
    QCOMPARE(recorder.take(), QStringList());
    object.insert(QStringLiteral("h3"), parsed(R"({"pointSize": 5})"));
    fonts.load(object, true);
    QCOMPARE(recorder.take(), QStringList(QStringLiteral("h3FontChanged")));
}

void tst_ThemeObjectFonts::groupDestroyedByAHandlerOfALoad_data()
{
    QTest::addColumn<QString>("signal");

    for (const QString &signal : allSignals)
        QTest::newRow(qPrintable(signal)) << signal;
}

void tst_ThemeObjectFonts::groupDestroyedByAHandlerOfALoad()
{
    QFETCH(QString, signal);

    const QPointer<ThemeObjectFonts> fonts(new ThemeObjectFonts);
    SignalRecorder recorder(fonts);
    recorder.onSignal([&](const QString &name) {
        if (name == signal)
            delete fonts;
    });
    QJsonObject object = parsed(R"({"main": {"pointSize": 44}, "h1": {"pointSize": 3}})");
    fonts->load(object, true);
    QVERIFY(!fonts);
    QCOMPARE(recorder.take(), allSignals.mid(0, allSignals.indexOf(signal) + 1));
}

void tst_ThemeObjectFonts::membersOfTheWrongType_data()
{
    QTest::addColumn<QJsonValue>("value");

    QTest::newRow("null") << QJsonValue(QJsonValue::Null);
    QTest::newRow("boolean") << QJsonValue(true);
    QTest::newRow("number") << QJsonValue(12);
    QTest::newRow("huge number") << QJsonValue(1e308);
    QTest::newRow("text") << QJsonValue(QStringLiteral("Serif"));
    QTest::newRow("array") << QJsonValue(QJsonArray{ parsed(R"({"pointSize": 44})") });
}

void tst_ThemeObjectFonts::membersOfTheWrongType()
{
    QFETCH(QJsonValue, value);

    // Each reads as if it were left out.
    for (const char *member : members) {
        QJsonObject without = parsed(R"({"main": {"pointSize": 20}, "alternate": {"pointSize": 24},
                "h1": {"pointSize": 28}, "h2": {"pointSize": 32}, "h3": {"pointSize": 36},
                "h4": {"pointSize": 40}})");
        QJsonObject wrong = without;
        without.remove(QLatin1String(member));
        wrong.insert(QLatin1String(member), value);
        ThemeObjectFonts expected;
        expected.load(without, true);
        ThemeObjectFonts fonts;
        fonts.load(wrong, true);
        QCOMPARE(values(fonts), values(expected));
    }
}

void tst_ThemeObjectFonts::applicationFontWithAPixelSize()
{
    QFont pixels(QStringLiteral("App"));
    pixels.setPixelSize(33);
    const ApplicationFont applicationFont(pixels);
    ThemeObjectFonts fonts;
    QJsonObject object;
    fonts.load(object, true);
    // Such a font has the point size -1: no size to scale, but one to add to.
    QCOMPARE(fonts.mainFont().pixelSize(), 33);
    QCOMPARE(fonts.alternateFont().pixelSize(), 33);
    QCOMPARE(sizes(fonts), QList<double>({ -1, -1, 4, 3, 2, 2 }));
}

void tst_ThemeObjectFonts::emptyDescription()
{
    const QFont base = unusualFont();
    const QFont read = ThemeObjectFonts().readFont(QJsonObject(), base);
    QCOMPARE(read.family(), base.family());
    QCOMPARE(read.pointSizeF(), 30.0);
    QCOMPARE(int(read.weight()), int(QFont::DemiBold));
    QCOMPARE(read.style(), QFont::StyleItalic);
    QCOMPARE(read.letterSpacing(), 2.5);
    QCOMPARE(read.letterSpacingType(), QFont::AbsoluteSpacing);
    // All the rest is a fresh font's.
    const QFont fresh;
    QCOMPARE(read.capitalization(), QFont::MixedCase);
    QCOMPARE(read.stretch(), fresh.stretch());
    QCOMPARE(read.underline(), false);
    QCOMPARE(read.strikeOut(), false);
    QCOMPARE(read.kerning(), true);
    QCOMPARE(read.wordSpacing(), fresh.wordSpacing());
    QCOMPARE(read.fixedPitch(), fresh.fixedPitch());
    QCOMPARE(read.hintingPreference(), fresh.hintingPreference());
}

void tst_ThemeObjectFonts::descriptionReplacesTheBase()
{
    const QFont read = ThemeObjectFonts().readFont(
            parsed(R"({"family": "DejaVu Sans", "pointSize": 20, "bold": false, "italic": false,
                    "capitalization": "allLowercase", "letterSpacing": -1.5, "weight": "Bold"})"),
            unusualFont());
    QCOMPARE(read.family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(read.pointSizeF(), 15.0);
    QCOMPARE(read.weight(), int(QFont::Bold));
    QCOMPARE(read.style(), QFont::StyleNormal);
    QCOMPARE(read.capitalization(), QFont::AllLowercase);
    QCOMPARE(read.letterSpacing(), -1.5);
    QCOMPARE(read.letterSpacingType(), QFont::AbsoluteSpacing);
}

void tst_ThemeObjectFonts::family_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *name, const char *description, const char *expected) {
        QTest::newRow(name) << QByteArray(description) << QString::fromUtf8(expected);
    };
    row("missing", "{}", "Base Family");
    row("given", R"({"family": "Other Family"})", "Other Family");
    row("not installed", R"({"family": "No Such Family"})", "No Such Family");
    row("unicode", R"({"family": "明朝"})", "明朝");
    row("empty text", R"({"family": ""})", "");
    row("outer blanks are kept", R"({"family": " Other "})", " Other ");
    row("number", R"({"family": 7})", "Base Family");
    row("null", R"({"family": null})", "Base Family");
    row("boolean", R"({"family": true})", "Base Family");
    row("array", R"({"family": ["Other Family"]})", "Base Family");
    row("object", R"({"family": {"name": "Other Family"}})", "Base Family");
}

void tst_ThemeObjectFonts::family()
{
    QFETCH(QByteArray, description);
    QFETCH(QString, expected);

    QCOMPARE(ThemeObjectFonts().readFont(parsed(description), unusualFont()).family(), expected);
}

void tst_ThemeObjectFonts::pointSize_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<double>("expected");

    const auto row = [](const char *name, const char *description, double expected) {
        QTest::newRow(name) << QByteArray(description) << expected;
    };
    // The base has 40 points, the application's font 10.
    row("missing", "{}", 30);
    row("whole", R"({"pointSize": 16})", 12);
    row("fraction", R"({"pointSize": 10.5})", 7.875);
    row("small", R"({"pointSize": 0.01})", 0.0075);
    row("text", R"({"pointSize": "16"})", 30);
    row("null", R"({"pointSize": null})", 30);
    row("boolean", R"({"pointSize": true})", 30);
    row("array", R"({"pointSize": [16]})", 30);
    row("object", R"({"pointSize": {}})", 30);
    // A size that QFont refuses leaves the fresh font's, and nothing on the log.
    row("zero", R"({"pointSize": 0})", 10);
    row("negative", R"({"pointSize": -16})", 10);
    row("minus one", R"({"pointSize": -1})", 10);
    row("negative and huge", R"({"pointSize": -1e308})", 10);
    row("huge", R"({"pointSize": 1e308})", 0.75e308);
}

void tst_ThemeObjectFonts::pointSize()
{
    QFETCH(QByteArray, description);
    QFETCH(double, expected);

    const ApplicationFont applicationFont(QFont(QStringLiteral("App"), 10));
    const QFont read = ThemeObjectFonts().readFont(parsed(description), unusualFont());
    QCOMPARE(read.pointSizeF(), expected);
}

void tst_ThemeObjectFonts::hugeSizesOfHeadings()
{
    ThemeObjectFonts fonts;
    QJsonObject object = parsed(R"({"main": {"pointSize": 1e308}})");
    fonts.load(object, true);
    QCOMPARE(fonts.h1Font().pointSizeF(), 0.75e308);
    QCOMPARE(fonts.h2Font().pointSizeF(), 0.75e308);
    QCOMPARE(fonts.h3Font().pointSize(), std::numeric_limits<int>::max());
    QCOMPARE(fonts.h4Font().pointSize(), std::numeric_limits<int>::max());
}

void tst_ThemeObjectFonts::boldHasNoEffect_data()
{
    QTest::addColumn<QByteArray>("description");

    QTest::newRow("missing") << QByteArray("{}");
    QTest::newRow("true") << QByteArray(R"({"bold": true})");
    QTest::newRow("false") << QByteArray(R"({"bold": false})");
    QTest::newRow("text") << QByteArray(R"({"bold": "true"})");
    QTest::newRow("null") << QByteArray(R"({"bold": null})");
    QTest::newRow("number") << QByteArray(R"({"bold": 1})");
    QTest::newRow("array") << QByteArray(R"({"bold": [true]})");
    QTest::newRow("object") << QByteArray(R"({"bold": {}})");
}

void tst_ThemeObjectFonts::boldHasNoEffect()
{
    QFETCH(QByteArray, description);

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const int lightest = 1;
    const int heaviest = 1000;
#else
    const int lightest = 0;
    const int heaviest = 99;
#endif
    for (const int weight : { lightest, int(QFont::Light), int(QFont::Normal), int(QFont::Medium),
                              QFont::Medium + 1, int(QFont::Bold), heaviest }) {
        QFont base;
        base.setWeight(QFont::Weight(weight));
        QCOMPARE(int(base.weight()), weight);
        QCOMPARE(int(ThemeObjectFonts().readFont(parsed(description), base).weight()), weight);
    }
}

void tst_ThemeObjectFonts::italic_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QFont::Style>("baseStyle");
    QTest::addColumn<QFont::Style>("expected");

    const auto row = [](const char *name, const char *description, QFont::Style baseStyle,
                        QFont::Style expected) {
        QTest::newRow(name) << QByteArray(description) << baseStyle << expected;
    };
    row("missing on upright", "{}", QFont::StyleNormal, QFont::StyleNormal);
    row("missing on italic", "{}", QFont::StyleItalic, QFont::StyleItalic);
    row("missing on oblique", "{}", QFont::StyleOblique, QFont::StyleItalic);
    row("true on upright", R"({"italic": true})", QFont::StyleNormal, QFont::StyleItalic);
    row("false on italic", R"({"italic": false})", QFont::StyleItalic, QFont::StyleNormal);
    row("false on oblique", R"({"italic": false})", QFont::StyleOblique, QFont::StyleNormal);
    row("text on upright", R"({"italic": "true"})", QFont::StyleNormal, QFont::StyleNormal);
    row("text on italic", R"({"italic": "false"})", QFont::StyleItalic, QFont::StyleItalic);
    row("number on upright", R"({"italic": 1})", QFont::StyleNormal, QFont::StyleNormal);
    row("number on italic", R"({"italic": 0})", QFont::StyleItalic, QFont::StyleItalic);
    row("null on italic", R"({"italic": null})", QFont::StyleItalic, QFont::StyleItalic);
    row("array on italic", R"({"italic": []})", QFont::StyleItalic, QFont::StyleItalic);
    row("object on italic", R"({"italic": {}})", QFont::StyleItalic, QFont::StyleItalic);
}

void tst_ThemeObjectFonts::italic()
{
    QFETCH(QByteArray, description);
    QFETCH(QFont::Style, baseStyle);
    QFETCH(QFont::Style, expected);

    QFont base;
    base.setStyle(baseStyle);
    QCOMPARE(ThemeObjectFonts().readFont(parsed(description), base).style(), expected);
}

void tst_ThemeObjectFonts::capitalization_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QFont::Capitalization>("expected");

    const auto row = [](const char *name, const char *description, QFont::Capitalization expected) {
        QTest::newRow(name) << QByteArray(description) << expected;
    };
    row("missing", "{}", QFont::MixedCase);
    row("empty", R"({"capitalization": ""})", QFont::MixedCase);
    row("upper", R"({"capitalization": "alluppercase"})", QFont::AllUppercase);
    row("upper, camel case", R"({"capitalization": "AllUppercase"})", QFont::AllUppercase);
    row("lower", R"({"capitalization": "alllowercase"})", QFont::AllLowercase);
    row("lower, in upper case", R"({"capitalization": "ALLLOWERCASE"})", QFont::AllLowercase);
    row("small capitals", R"({"capitalization": "smallcaps"})", QFont::SmallCaps);
    row("small capitals, camel case", R"({"capitalization": "SmallCaps"})", QFont::SmallCaps);
    row("small capitals, mixed", R"({"capitalization": "sMALLcAPS"})", QFont::SmallCaps);
    row("capitalize", R"({"capitalization": "capitalize"})", QFont::Capitalize);
    row("capitalize, camel case", R"({"capitalization": "Capitalize"})", QFont::Capitalize);
    row("mixed case", R"({"capitalization": "mixedcase"})", QFont::MixedCase);
    row("blank between", R"({"capitalization": "small caps"})", QFont::MixedCase);
    row("blank between, camel case", R"({"capitalization": "Small Caps"})", QFont::MixedCase);
    row("outer blank", R"({"capitalization": " smallcaps"})", QFont::MixedCase);
    row("unknown", R"({"capitalization": "shouting"})", QFont::MixedCase);
    row("beginning of a word", R"({"capitalization": "capital"})", QFont::MixedCase);
    row("longer than a word", R"({"capitalization": "capitalized"})", QFont::MixedCase);
    row("number", R"({"capitalization": 1})", QFont::MixedCase);
    row("null", R"({"capitalization": null})", QFont::MixedCase);
    row("boolean", R"({"capitalization": true})", QFont::MixedCase);
    row("array", R"({"capitalization": ["smallcaps"]})", QFont::MixedCase);
    row("object", R"({"capitalization": {}})", QFont::MixedCase);
}

void tst_ThemeObjectFonts::capitalization()
{
    QFETCH(QByteArray, description);
    QFETCH(QFont::Capitalization, expected);

    // The base's own is never taken.
    for (const QFont::Capitalization baseCapitalization :
         { QFont::MixedCase, QFont::AllUppercase, QFont::SmallCaps }) {
        QFont base;
        base.setCapitalization(baseCapitalization);
        QCOMPARE(ThemeObjectFonts().readFont(parsed(description), base).capitalization(), expected);
    }
}

void tst_ThemeObjectFonts::letterSpacing_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<double>("expected");

    const auto row = [](const char *name, const char *description, double expected) {
        QTest::newRow(name) << QByteArray(description) << expected;
    };
    row("missing", "{}", 120);
    row("positive", R"({"letterSpacing": 3})", 3);
    row("fraction", R"({"letterSpacing": 0.5})", 0.5);
    row("zero", R"({"letterSpacing": 0})", 0);
    row("negative", R"({"letterSpacing": -2})", -2);
    row("text", R"({"letterSpacing": "3"})", 120);
    row("null", R"({"letterSpacing": null})", 120);
    row("boolean", R"({"letterSpacing": true})", 120);
    row("array", R"({"letterSpacing": [3]})", 120);
    row("object", R"({"letterSpacing": {}})", 120);
}

void tst_ThemeObjectFonts::letterSpacing()
{
    QFETCH(QByteArray, description);
    QFETCH(double, expected);

    // A base's percentage is taken over as that number of pixels.
    for (const QFont::SpacingType type : { QFont::PercentageSpacing, QFont::AbsoluteSpacing }) {
        QFont base;
        base.setLetterSpacing(type, 120);
        const QFont read = ThemeObjectFonts().readFont(parsed(description), base);
        QCOMPARE(read.letterSpacing(), expected);
        QCOMPARE(read.letterSpacingType(), QFont::AbsoluteSpacing);
    }
    const QFont huge = ThemeObjectFonts().readFont(parsed(R"({"letterSpacing": 1e308})"), QFont());
    QCOMPARE(huge.letterSpacingType(), QFont::AbsoluteSpacing);
}

void tst_ThemeObjectFonts::weight_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<int>("expected");

    const auto row = [](const char *name, const char *description, int expected) {
        QTest::newRow(name) << QByteArray(description) << expected;
    };
    // The base is a DejaVu Sans of weight DemiBold.
    row("missing", "{}", QFont::DemiBold);
    row("missing, bold", R"({"bold": true})", QFont::DemiBold);
    row("empty", R"({"weight": ""})", QFont::DemiBold);
    row("style of the family", R"({"weight": "Bold"})", QFont::Bold);
    row("regular style of the family", R"({"weight": "Book"})", QFont::Normal);
    row("style of the family against bold", R"({"weight": "Book", "bold": true})", QFont::Normal);
    row("style of the family against not bold", R"({"weight": "Bold", "bold": false})",
        QFont::Bold);
    row("style that the family lacks", R"({"weight": "Poster"})", QFont::DemiBold);
    row("style that the family lacks, bold", R"({"weight": "Poster", "bold": true})",
        QFont::DemiBold);
    row("other letter case", R"({"weight": "bold"})", QFont::DemiBold);
    row("outer blank", R"({"weight": " Bold"})", QFont::DemiBold);
    row("unicode", R"({"weight": "太字"})", QFont::DemiBold);
    row("figure as text", R"({"weight": "75"})", QFont::DemiBold);
    row("number", R"({"weight": 75})", QFont::DemiBold);
    row("negative number", R"({"weight": -75})", QFont::DemiBold);
    row("null", R"({"weight": null})", QFont::DemiBold);
    row("boolean", R"({"weight": true})", QFont::DemiBold);
    row("array", R"({"weight": ["Bold"]})", QFont::DemiBold);
    row("object", R"({"weight": {}})", QFont::DemiBold);
}

void tst_ThemeObjectFonts::weight()
{
    QFETCH(QByteArray, description);
    QFETCH(int, expected);

    const QFont base(QStringLiteral("DejaVu Sans"), 10, QFont::DemiBold);
    QCOMPARE(int(ThemeObjectFonts().readFont(parsed(description), base).weight()), expected);
}

void tst_ThemeObjectFonts::weightIsAStyleOfTheFamilyInTheDescription()
{
    const QFont base(QStringLiteral("DejaVu Sans"), 10, QFont::DemiBold);
    QJsonObject description = parsed(R"({"weight": "Bold"})");
    description.insert(QStringLiteral("family"), TestFont::family());
    QCOMPARE(int(ThemeObjectFonts().readFont(description, base).weight()), int(QFont::DemiBold));
    description.insert(QStringLiteral("weight"), QStringLiteral("Book"));
    QCOMPARE(int(ThemeObjectFonts().readFont(description, base).weight()), int(QFont::Normal));
    description.insert(QStringLiteral("family"), QStringLiteral("No Such Family"));
    QCOMPARE(int(ThemeObjectFonts().readFont(description, base).weight()), int(QFont::DemiBold));
}

void tst_ThemeObjectFonts::descriptionIsCaseSensitive()
{
    const QFont base = unusualFont();
    const QFont read = ThemeObjectFonts().readFont(
            parsed(R"({"Family": "X", "pointsize": 4, "Italic": false, "LetterSpacing": 9,
                    "Capitalization": "smallcaps", "WEIGHT": "Bold", "underline": true})"),
            base);
    QCOMPARE(read, ThemeObjectFonts().readFont(QJsonObject(), base));
}

TAVOLINS_TEST_MAIN(tst_ThemeObjectFonts)
#include "tst_themeobjectfonts.moc"
