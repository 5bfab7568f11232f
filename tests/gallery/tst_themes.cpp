// The bundled themes: complete, and readable everywhere.

#include "gallery/surroundings.h"
#include "manager/thememanager.h"
#include "support/readable.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

using Readable::contrast;

class tst_Themes : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void contrastIsMeasuredLikeWcag_data();
    void contrastIsMeasuredLikeWcag();
    void allThemesAreLoaded();
    void classesAreThere_data();
    void classesAreThere();
    void stylesAreThere_data();
    void stylesAreThere();
    void textIsReadable_data();
    void textIsReadable();
    void shadesAreReadableAsText_data();
    void shadesAreReadableAsText();
    void stylesAreReadable_data();
    void stylesAreReadable();
    void extendingWithoutGlobalKeepsAllValues();
    void extendingWithGlobalKeepsClassesAndStylesOnly();
    void fontsAreAsDescribed();

private:
    static QStringList titles();
    static Theme *theme(const QString &title);
    static const ThemePrivate *data(const QString &title);
    static double wantedContrast(const QString &title);
    static void addThemeRows();
};

namespace {

const char *const classNames[] = { "header", "primary", "danger", "muted", "code" };
const char *const styleNames[] = { "Button", "Button_primary", "Button_danger", "Card", "Field" };

QByteArray describe(const QString &what, const QColor &text, const QColor &surface)
{
    return QStringLiteral("%1: %2 on %3 is %4")
            .arg(what, text.name(QColor::HexArgb), surface.name(QColor::HexArgb))
            .arg(contrast(text, surface))
            .toLocal8Bit();
}

} // namespace

QStringList tst_Themes::titles()
{
    return { QStringLiteral("Daylight"), QStringLiteral("Dusk"), QStringLiteral("Moss"),
             QStringLiteral("Plum"), QStringLiteral("Signal") };
}

Theme *tst_Themes::theme(const QString &title)
{
    return ThemeManager::getInstance()->themeFromName(title);
}

const ThemePrivate *tst_Themes::data(const QString &title)
{
    return qobject_cast<const ThemePrivate *>(theme(title)->colors()->parent());
}

double tst_Themes::wantedContrast(const QString &title)
{
    return title == QLatin1String("Signal") ? 7.0 : 4.5;
}

void tst_Themes::addThemeRows()
{
    QTest::addColumn<QString>("title");
    const QStringList all = titles();
    for (const QString &title : all)
        QTest::newRow(qPrintable(title)) << title;
}

void tst_Themes::initTestCase()
{
    ThemeManager::getInstance()->loadThemes(QStringLiteral(GALLERY_THEMES_DIR));
    QCOMPARE(Surroundings::chooseControlsStyle(QStringLiteral(TAVOLINS_QML_IMPORT_PATH)),
             bool(GALLERY_HAS_CONTROLS));
}

void tst_Themes::contrastIsMeasuredLikeWcag_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("surface");
    QTest::addColumn<double>("ratio");
    QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("white on black") << QColor(Qt::white) << QColor(Qt::black) << 21.0;
    QTest::newRow("a color on itself") << QColor(Qt::red) << QColor(Qt::red) << 1.0;
    QTest::newRow("the lightest grey that passes")
            << QColor(0x76, 0x76, 0x76) << QColor(Qt::white) << 4.54;
    QTest::newRow("transparent text") << QColor(0, 0, 0, 0) << QColor(Qt::white) << 1.0;
    QTest::newRow("half transparent text")
            << QColor::fromRgbF(0, 0, 0, 0.5) << QColor(Qt::white) << 3.98;
}

void tst_Themes::contrastIsMeasuredLikeWcag()
{
    QFETCH(QColor, text);
    QFETCH(QColor, surface);
    QFETCH(double, ratio);
    QVERIFY2(std::abs(contrast(text, surface) - ratio) < 0.01,
             qPrintable(QString::number(contrast(text, surface))));
}

void tst_Themes::allThemesAreLoaded()
{
    const ThemeManager *manager = ThemeManager::getInstance();
    QStringList loaded;
    for (int row = 0; row < manager->rowCount(); ++row)
        loaded.append(manager->data(manager->index(row)).toString());
    QCOMPARE(loaded, titles());
}

void tst_Themes::classesAreThere_data()
{
    addThemeRows();
}

void tst_Themes::classesAreThere()
{
    QFETCH(QString, title);
    for (const char *name : classNames)
        QVERIFY2(!data(title)->classScopes.value(QLatin1String(name)).isEmpty(), name);
}

void tst_Themes::stylesAreThere_data()
{
    addThemeRows();
}

void tst_Themes::stylesAreThere()
{
    QFETCH(QString, title);
    QStringList wanted;
    for (const char *name : styleNames)
        wanted.append(QLatin1String(name));
    QStringList found = data(title)->styles.keys();
    wanted.sort();
    found.sort();
    QCOMPARE(found, wanted);
}

void tst_Themes::textIsReadable_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("classname");
    const QStringList all = titles();
    for (const QString &title : all) {
        QTest::newRow(qPrintable(title)) << title << QString();
        for (const char *name : classNames)
            QTest::newRow(qPrintable(title + QLatin1Char(' ') + QLatin1String(name)))
                    << title << QString::fromLatin1(name);
    }
}

void tst_Themes::textIsReadable()
{
    QFETCH(QString, title);
    QFETCH(QString, classname);
    Theme item;
    item = *theme(title);
    item.setClassnames(classname);
    const ThemeObjectColors *colors = item.colors();
    // Surfaces take the shades when they are hovered or pressed.
    const QColor surfaces[] = { colors->background(), colors->lighterBackground(),
                                colors->darkerBackground() };
    for (const QColor &surface : surfaces)
        QVERIFY2(contrast(colors->foreground(), surface) >= wantedContrast(title),
                 describe(QStringLiteral("text"), colors->foreground(), surface).constData());
}

void tst_Themes::shadesAreReadableAsText_data()
{
    addThemeRows();
}

void tst_Themes::shadesAreReadableAsText()
{
    QFETCH(QString, title);
    const ThemeObjectColors *colors = theme(title)->colors();
    const double wanted = wantedContrast(title);
    const QColor texts[] = { colors->lighterForeground(), colors->darkerForeground() };
    const QColor surfaces[] = { colors->background(), colors->lighterBackground(),
                                colors->darkerBackground() };
    for (const QColor &text : texts) {
        for (const QColor &surface : surfaces)
            QVERIFY2(contrast(text, surface) >= wanted,
                     describe(QStringLiteral("shade"), text, surface).constData());
    }
    QVERIFY2(contrast(colors->selection(), colors->foreground()) >= wanted,
             describe(QStringLiteral("selection"), colors->selection(), colors->foreground())
                     .constData());
}

void tst_Themes::stylesAreReadable_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("textCount");
    const int textCounts[] = { 1, 1, 1, 2, 2 };
    const QStringList all = titles();
    for (const QString &title : all) {
        for (size_t i = 0; i < std::size(styleNames); ++i)
            QTest::newRow(qPrintable(title + QLatin1Char(' ') + QLatin1String(styleNames[i])))
                    << title << QString::fromLatin1(styleNames[i]) << textCounts[i];
    }
}

void tst_Themes::stylesAreReadable()
{
    // Without the style, Button and Field look like whatever style there is.
    QFETCH(QString, style);
    if (!GALLERY_HAS_CONTROLS && style != QLatin1String("Card"))
        QSKIP("built without the style for Qt Quick Controls");
    QFETCH(QString, title);
    QFETCH(int, textCount);
    ThemeManager::getInstance()->setCurrent(theme(title));

    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QQmlComponent component(&engine, QUrl(theme(title)->getStyle(style)));
    const QScopedPointer<QObject> root(component.create());
    QVERIFY2(root, qPrintable(component.errorString()));

    const auto *background = root->property("background").value<QObject *>();
    const QColor surface =
            (background ? background : root.get())->property("color").value<QColor>();
    int checked = 0;
    QList<QQuickItem *> items = root->findChildren<QQuickItem *>();
    if (background)
        items.append(qobject_cast<QQuickItem *>(root.get()));
    for (const QQuickItem *item : items) {
        if (!item->property("text").isValid() || !item->property("color").isValid())
            continue;
        ++checked;
        const QColor text = item->property("color").value<QColor>();
        QVERIFY2(contrast(text, surface) >= wantedContrast(title),
                 describe(style, text, surface).constData());
        const QColor selected = item->property("selectedTextColor").value<QColor>();
        const QColor selection = item->property("selectionColor").value<QColor>();
        QVERIFY2(!selected.isValid() || contrast(selected, selection) >= wantedContrast(title),
                 describe(style, selected, selection).constData());
    }
    QCOMPARE(checked, textCount);
}

void tst_Themes::extendingWithoutGlobalKeepsAllValues()
{
    const Theme *plum = theme(QStringLiteral("Plum"));
    const Theme *parent = theme(QStringLiteral("Daylight"));
    QCOMPARE(plum->colors()->background(), parent->colors()->background());
    QCOMPARE(plum->fonts()->h1Font(), parent->fonts()->h1Font());
    QCOMPARE(plum->radius(), parent->radius());
    const auto &own = data(QStringLiteral("Plum"))->classScopes;
    const auto &inherited = data(QStringLiteral("Daylight"))->classScopes;
    QCOMPARE(own.value(QStringLiteral("danger")), inherited.value(QStringLiteral("danger")));
    QVERIFY(own.value(QStringLiteral("primary")) != inherited.value(QStringLiteral("primary")));
}

void tst_Themes::extendingWithGlobalKeepsClassesAndStylesOnly()
{
    const Theme *moss = theme(QStringLiteral("Moss"));
    const Theme *parent = theme(QStringLiteral("Dusk"));
    QVERIFY(moss->colors()->background() != parent->colors()->background());
    QVERIFY(moss->radius() != parent->radius());
    const auto &own = data(QStringLiteral("Moss"))->classScopes;
    const auto &inherited = data(QStringLiteral("Dusk"))->classScopes;
    for (const char *name : { "danger", "muted", "code" })
        QCOMPARE(own.value(QLatin1String(name)), inherited.value(QLatin1String(name)));
}

void tst_Themes::fontsAreAsDescribed()
{
    const ThemeObjectFonts *fonts = theme(QStringLiteral("Dusk"))->fonts();
    QCOMPARE(fonts->mainFont().pointSizeF(), 10.5);
    QCOMPARE(fonts->h1Font().pointSizeF(), 21.75);
    // The weight comes from the name of a style of the family.
    QCOMPARE(fonts->h1Font().weight(), int(QFont::Bold));
    QCOMPARE(fonts->h4Font().capitalization(), QFont::AllUppercase);
}

TAVOLINS_TEST_MAIN(tst_Themes)
#include "tst_themes.moc"
