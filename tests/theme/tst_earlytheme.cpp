#include "manager/thememanager.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtTest/QtTest>

/// Themes of a native program that has no GUI application, and that made a theme before anybody
/// asked for the catalogue. The order of the functions matters.
class tst_EarlyTheme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void firstThemeIsTheGlobalOne();
    void destroyedGlobalThemeIsReplaced();
    void filesAreReadWithoutAGuiApplication();
    void overloadedThemeThatWasGivenAway();
};

void tst_EarlyTheme::firstThemeIsTheGlobalOne()
{
    QVERIFY(!Theme::g_theme);
    auto *first = new Theme;
    QCOMPARE(Theme::g_theme, first);
    QCOMPARE(Theme::global(), first);
    ThemeManager *manager = ThemeManager::getInstance();
    QVERIFY(manager->current() != first);
    QCOMPARE(Theme::global(), first);
    delete first;
    QVERIFY(!Theme::g_theme);
}

void tst_EarlyTheme::destroyedGlobalThemeIsReplaced()
{
    const QPointer<Theme> replacement = Theme::global();
    QVERIFY(replacement);
    QCOMPARE(Theme::g_theme, replacement.data());
    QCOMPARE(Theme::global(), replacement.data());
    const std::unique_ptr<Theme> item(Theme::getObjectTheme(nullptr));

    auto *theme = new Theme(ThemeManager::getInstance());
    theme->setRadius(4);
    ThemeManager::getInstance()->setCurrent(theme);
    QCOMPARE(replacement->radius(), 4);
    QCOMPARE(item->radius(), 4);
}

void tst_EarlyTheme::filesAreReadWithoutAGuiApplication()
{
    QVERIFY(!qobject_cast<QGuiApplication *>(QCoreApplication::instance()));
    write(QStringLiteral("fonts/a.ttf"), "no font");
    const QString path = write(QStringLiteral("a.thm"),
                               R"({"title": "A", "global": {"fonts": {"main": {"weight": "Bold",
                                   "pointSize": 16}}, "colors": {"foreground": "red"}}})");
    Theme theme;
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(theme.colors()->foreground(), QColor(Qt::red));
    QCOMPARE(theme.fonts()->mainFont().pointSizeF(), 12.0);
    // Styles have names only where there is a font database.
    QCOMPARE(theme.fonts()->mainFont().weight(), QFont().weight());
}

void tst_EarlyTheme::overloadedThemeThatWasGivenAway()
{
    QObject stranger;
    auto *theme = new Theme;
    theme->read(
            QJsonObject{ { QStringLiteral("a"), QJsonObject{ { QStringLiteral("radius"), 1 } } } },
            true);
    theme->setClassnames(QStringLiteral("a"));
    const QPointer<Theme> overloaded = theme->findChild<Theme *>();
    QVERIFY(overloaded);
    overloaded->setParent(&stranger);
    delete theme;
    QVERIFY(overloaded);
    deleteDeferred();
    QVERIFY(!overloaded);
}

QTEST_GUILESS_MAIN(tst_EarlyTheme)
#include "tst_earlytheme.moc"
