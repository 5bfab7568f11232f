#include "checker/startertheme.h"

#include "checker/checker.h"
#include "checker/contrast.h"
#include "checker/effectivevalues.h"
#include "checker/loadedfolder.h"
#include "checker/palette.h"
#include "checker/report.h"
#include "checker/themekeys.h"
#include "support/testcase.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QtTest>

#include <random>

class tst_StarterTheme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void holdsEveryKeyOfGlobal();
    void takesItsColorsOver();
    void anyTitleIsWrittenRightly_data();
    void anyTitleIsWrittenRightly();
    void everyTextIsReadable_data();
    void everyTextIsReadable();
    void checkerFindsNothing();
    void shadesAreShades();
};

namespace {

const QColor paper(0xf6, 0xf5, 0xf2);
const QColor teal(0x1f, 0x6f, 0x8b);

QJsonObject starter(const QString &title, const QColor &background, const QColor &accent)
{
    return QJsonDocument::fromJson(starterTheme(title, background, accent)).object();
}

} // namespace

void tst_StarterTheme::holdsEveryKeyOfGlobal()
{
    const QJsonObject global =
            starter(QStringLiteral("New"), paper, teal).value(QLatin1String("global")).toObject();
    const auto sorted = [](QStringList names) {
        names.sort();
        return names;
    };
    QCOMPARE(global.keys(), sorted(ThemeKeys::names(ThemeKey::Scope)));
    QCOMPARE(global.value(QLatin1String("colors")).toObject().keys(),
             sorted(ThemeKeys::names(ThemeKey::Colors)));
    QCOMPARE(global.value(QLatin1String("fonts")).toObject().keys(),
             sorted(ThemeKeys::names(ThemeKey::Fonts)));
}

void tst_StarterTheme::takesItsColorsOver()
{
    const QJsonObject document = starter(QStringLiteral("New"), paper, teal);
    const auto background = [&document](const char *scope) {
        return document.value(QLatin1String(scope))
                .toObject()
                .value(QLatin1String("colors"))
                .toObject()
                .value(QLatin1String("background"))
                .toString();
    };
    QCOMPARE(background("global"), paper.name());
    QCOMPARE(background("primary"), teal.name());
}

void tst_StarterTheme::anyTitleIsWrittenRightly_data()
{
    QTest::addColumn<QString>("title");
    QTest::newRow("plain") << QStringLiteral("Harbour");
    QTest::newRow("quotes and backslash") << QStringLiteral("\"Har\\bour\"");
    QTest::newRow("letters beyond ASCII") << QStringLiteral("H\u00e4fen \u6e2f");
    QTest::newRow("place marks") << QStringLiteral("%1 %2 %3");
    QTest::newRow("line end") << QStringLiteral("a\nb");
}

void tst_StarterTheme::anyTitleIsWrittenRightly()
{
    QFETCH(QString, title);
    const QJsonObject document = starter(title, paper, teal);
    QCOMPARE(document.value(QLatin1String("title")).toString(), title);
    QVERIFY(document.contains(QLatin1String("code")));
}

void tst_StarterTheme::everyTextIsReadable_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("accent");
    QTest::newRow("the defaults") << paper << teal;
    QTest::newRow("white and black") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("black and white") << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("nothing but grey") << QColor(0x77, 0x77, 0x77) << QColor(0x76, 0x76, 0x76);
    QTest::newRow("nothing but yellow") << QColor(Qt::yellow) << QColor(Qt::yellow);
    QTest::newRow("blue on red") << QColor(Qt::red) << QColor(Qt::blue);
    std::mt19937 engine(3);
    for (int i = 0; i < 60; ++i) {
        const QColor background(QRgb(engine() | 0xff000000u));
        const QColor accent(QRgb(engine() | 0xff000000u));
        QTest::newRow(qPrintable(
                QStringLiteral("by chance: %1 with %2").arg(background.name(), accent.name())))
                << background << accent;
    }
}

/// Loads the theme as an application does and looks at what items with and without classes read.
void tst_StarterTheme::everyTextIsReadable()
{
    QFETCH(QColor, background);
    QFETCH(QColor, accent);
    write(QStringLiteral("new.thm"), starterTheme(QStringLiteral("New"), background, accent));
    const LoadedFolder themes(folder());
    QCOMPARE(themes.themes().size(), 1);
    for (const char *classname : { "", "header", "primary", "danger", "muted", "code" }) {
        const EffectiveValues values = EffectiveValues::of(themes, themes.themes().constFirst(),
                                                           QLatin1String(classname));
        const auto color = [&values](const QString &name) {
            return values.find(QStringLiteral("colors/") + name)->value.value<QColor>();
        };
        const auto check = [&](const QString &text, const QString &surface) {
            const double ratio = Contrast::ratio(color(text), color(surface));
            QVERIFY2(ratio >= Contrast::levelAA,
                     qPrintable(QStringLiteral("%1: %2 on %3 is %4")
                                        .arg(QLatin1String(classname), text, surface)
                                        .arg(ratio)));
        };
        for (const char *text : { "foreground", "lighterForeground", "darkerForeground" }) {
            for (const char *surface : { "background", "lighterBackground", "darkerBackground" })
                check(QLatin1String(text), QLatin1String(surface));
        }
        check(QStringLiteral("selection"), QStringLiteral("foreground"));
    }
}

void tst_StarterTheme::checkerFindsNothing()
{
    const QColor colors[][2] = { { paper, teal },
                                 { Qt::white, Qt::red },
                                 { Qt::black, Qt::yellow },
                                 { QColor(0x77, 0x77, 0x77), QColor(0x88, 0x44, 0xaa) } };
    int count = 0;
    for (const auto &pair : colors) {
        const QString name = QString::number(++count);
        write(name + QStringLiteral(".thm"), starterTheme(name, pair[0], pair[1]));
    }
    const CheckReport report = checkThemes({ folder() });
    QCOMPARE(report.themes, count);
    QVERIFY2(report.problems.isEmpty(), qPrintable(Report::text(report, Report::TextStyle())));
}

void tst_StarterTheme::shadesAreShades()
{
    std::mt19937 engine(4);
    for (int i = 0; i < 1000; ++i) {
        const QColor background(QRgb(engine() | 0xff000000u));
        const QColor accent(QRgb(engine() | 0xff000000u));
        const Palette palette = Palette::on(background, accent);
        QVERIFY(Contrast::luminance(palette.lighterBackground)
                >= Contrast::luminance(palette.background));
        QVERIFY(Contrast::luminance(palette.darkerBackground)
                <= Contrast::luminance(palette.background));
        QVERIFY(Contrast::luminance(palette.lighterForeground)
                >= Contrast::luminance(palette.foreground));
        QVERIFY(Contrast::luminance(palette.darkerForeground)
                <= Contrast::luminance(palette.foreground));
    }
}

TAVOLINS_TEST_MAIN(tst_StarterTheme)
#include "tst_startertheme.moc"
