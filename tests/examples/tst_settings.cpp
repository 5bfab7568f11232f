// The example "settings", used with mouse and keyboard.

#include "examples/settings/settingswindow.h"
#include "manager/thememanager.h"
#include "support/readable.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QSettings>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <algorithm>
#include <memory>

class tst_Settings : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void beginsWithItsFirstTheme();
    void remembersTheChosenTheme();
    void storedThemeThatIsGone();
    void everythingTakesTheThemesColors_data();
    void everythingTakesTheThemesColors();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void textIsReadable_data();
    void textIsReadable();
    void bannersClassFollowsTheWind_data();
    void bannersClassFollowsTheWind();
    void stylesAreTheThemes();
    void togglesAreStored_data();
    void togglesAreStored();
    void menuOpensTheDialog();
    void dialogByKeyboard();
    void monitorFollows();

private:
    void open();
    void choose(const QString &title);
    QQuickItem *item(const char *name) const;
    template <typename Kind = QObject>
    Kind *object(const char *name) const;
    void click(QQuickItem *item) const;
    QImage picture(QQuickWindow *window = nullptr) const;
    static QColor classColor(const char *classname);

    std::unique_ptr<SettingsWindow> m_settings;
    QQuickWindow *m_window = nullptr;
};

namespace {

ThemeManager &manager()
{
    return *ThemeManager::getInstance();
}

const char *const titles[] = { "Shore", "Deep", "Lantern" };

void addThemeRows()
{
    QTest::addColumn<QString>("title");
    for (const char *title : titles)
        QTest::newRow(title) << QString::fromLatin1(title);
}

/// The item named \a name below \a root, and all visible texts if there is no name.
void collect(QQuickItem *root, const QString &name, QList<QQuickItem *> &found)
{
    if (!root->isVisible())
        return;
    if (name.isEmpty() ? root->inherits("QQuickText") : root->objectName() == name)
        found.append(root);
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children)
        collect(child, name, found);
}

QPoint centerOf(const QQuickItem *item)
{
    return item->mapToScene(item->boundingRect().center()).toPoint();
}

} // namespace

void tst_Settings::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("tavolins"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_settings"));
}

void tst_Settings::init()
{
    TestCase::init();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder());
}

void tst_Settings::cleanup()
{
    m_settings.reset();
    TestCase::cleanup();
}

/// Starts the application, as far as one process can: no theme of the catalogue is current before.
void tst_Settings::open()
{
    m_settings.reset();
    manager().setCurrent(new Theme(&manager()));
    m_settings.reset(new SettingsWindow(QStringLiteral(TAVOLINS_QML_IMPORT_PATH)));
    m_window = m_settings->window();
    QVERIFY(m_window);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void tst_Settings::choose(const QString &title)
{
    manager().setCurrent(manager().themeFromName(title));
}

/// The visible item of that name, in the window or in a popup over it.
QQuickItem *tst_Settings::item(const char *name) const
{
    QList<QQuickItem *> found;
    collect(m_window->contentItem(), QLatin1String(name), found);
    return found.value(0);
}

template <typename Kind>
Kind *tst_Settings::object(const char *name) const
{
    return m_window->findChild<Kind *>(QLatin1String(name));
}

void tst_Settings::click(QQuickItem *item) const
{
    QTest::mouseClick(item->window(), Qt::LeftButton, Qt::NoModifier, centerOf(item));
}

/// What the window shows. The platform without a display holds no picture of windows, so it is one
/// of their items.
QImage tst_Settings::picture(QQuickWindow *window) const
{
    QQuickWindow *pictured = window ? window : m_window;
    const auto result = pictured->contentItem()->grabToImage();
    QSignalSpy ready(result.data(), &QQuickItemGrabResult::ready);
    return ready.wait() ? result->image() : QImage();
}

/// The background of an item of that class in the current theme.
QColor tst_Settings::classColor(const char *classname)
{
    // Not one that shares the data: with it, it would delete that.
    Theme theme;
    theme = *Theme::global();
    theme.setClassnames(QLatin1String(classname));
    return theme.colors()->background();
}

void tst_Settings::beginsWithItsFirstTheme()
{
    open();
    QCOMPARE(manager().current()->title(), QStringLiteral("Shore"));
    QCOMPARE(item("chooser")->property("displayText").toString(), QStringLiteral("Shore"));
    QCOMPARE(item("chooser")->property("count").toInt(), manager().rowCount());
}

void tst_Settings::remembersTheChosenTheme()
{
    open();
    click(item("chooser"));
    QObject *popup = item("chooser")->property("popup").value<QObject *>();
    QTRY_VERIFY(popup->property("opened").toBool());
    // Rows get their places when the window is drawn.
    m_window->grabWindow();
    QList<QQuickItem *> rows;
    collect(popup->property("contentItem").value<QQuickItem *>(), QString(), rows);
    const auto row = std::find_if(rows.cbegin(), rows.cend(), [](const QQuickItem *text) {
        return text->property("text").toString() == QLatin1String("Lantern");
    });
    QVERIFY(row != rows.cend());
    click(*row);
    QCOMPARE(manager().current()->title(), QStringLiteral("Lantern"));
    QTRY_VERIFY(!popup->property("visible").toBool());
    QCOMPARE(item("chooser")->property("displayText").toString(), QStringLiteral("Lantern"));

    open();
    QCOMPARE(manager().current()->title(), QStringLiteral("Lantern"));
    QCOMPARE(item("chooser")->property("displayText").toString(), QStringLiteral("Lantern"));
}

void tst_Settings::storedThemeThatIsGone()
{
    QSettings().setValue(QStringLiteral("theme"), QStringLiteral("Gone"));
    open();
    const QModelIndex first = manager().index(0);
    QCOMPARE(manager().current()->title(), manager().data(first).toString());
    m_settings.reset();
    // It may come back.
    QCOMPARE(QSettings().value(QStringLiteral("theme")).toString(), QStringLiteral("Gone"));
}

void tst_Settings::everythingTakesTheThemesColors_data()
{
    addThemeRows();
}

void tst_Settings::everythingTakesTheThemesColors()
{
    QFETCH(QString, title);
    open();
    choose(title);
    const QImage image = picture();
    QCOMPARE(image.size(), m_window->size());
    // To look at: see the README of the example.
    const QString pictures = qEnvironmentVariable("TAVOLINS_PICTURES");
    if (!pictures.isEmpty())
        QVERIFY(image.save(QStringLiteral("%1/%2.png").arg(pictures, title.toLower())));
    const ThemeObjectColors *colors = Theme::global()->colors();
    QCOMPARE(image.pixelColor(4, m_window->height() - 4), colors->background());
    QCOMPARE(image.pixelColor(4, 4), classColor("header"));
    const QPoint corner = item("banner")->mapToScene(QPointF(16, 16)).toPoint();
    QCOMPARE(image.pixelColor(corner), classColor("calm"));
}

void tst_Settings::nothingIsCutOff_data()
{
    addThemeRows();
}

void tst_Settings::nothingIsCutOff()
{
    QFETCH(QString, title);
    open();
    choose(title);
    m_window->resize(m_window->minimumSize());
    QTest::qWait(50);
    object("dialog")->setProperty("visible", true);
    QTRY_VERIFY(item("acceptButton"));
    QList<QQuickItem *> texts;
    collect(m_window->contentItem(), QString(), texts);
    QVERIFY(texts.size() > 15);
    for (const QQuickItem *text : qAsConst(texts)) {
        const QByteArray content = text->property("text").toByteArray();
        QVERIFY2(!text->property("truncated").toBool(), content.constData());
        QVERIFY2(text->width() >= text->implicitWidth() || text->property("lineCount").toInt() > 1,
                 content.constData());
        const QRectF area = text->mapRectToScene(text->boundingRect());
        QVERIFY2(QRectF(QPointF(), m_window->size()).contains(area), content.constData());
    }
}

void tst_Settings::textIsReadable_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("classname");
    for (const char *title : titles) {
        for (const char *classname :
             { "", "header", "primary", "danger", "calm", "breeze", "storm" }) {
            QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(
                    QLatin1String(title),
                    *classname ? QLatin1String(classname) : QLatin1String("no class"))))
                    << QString::fromLatin1(title) << QString::fromLatin1(classname);
        }
    }
}

void tst_Settings::textIsReadable()
{
    QFETCH(QString, title);
    QFETCH(QString, classname);
    open();
    choose(title);
    Theme theme;
    theme = *Theme::global();
    theme.setClassnames(classname);
    const ThemeObjectColors *colors = theme.colors();
    QVERIFY(classname.isEmpty() || colors != Theme::global()->colors());
    for (const QColor &surface :
         { colors->background(), colors->lighterBackground(), colors->darkerBackground() })
        QVERIFY2(Readable::contrast(colors->foreground(), surface) >= 4.5,
                 qPrintable(surface.name()));
    if (classname.isEmpty()) {
        for (const QColor &surface : { colors->background(), colors->lighterBackground() })
            QVERIFY(Readable::contrast(colors->lighterForeground(), surface) >= 4.5);
    }
}

void tst_Settings::bannersClassFollowsTheWind_data()
{
    addThemeRows();
}

void tst_Settings::bannersClassFollowsTheWind()
{
    QFETCH(QString, title);
    open();
    choose(title);
    QQuickItem *banner = item("banner");
    QQuickItem *wind = item("wind");
    click(wind);
    const auto blowUntil = [&](const char *classname) {
        for (int step = 0; step < 35; ++step) {
            if (Theme::attachedTheme(banner)->classnames() == QLatin1String(classname))
                return true;
            QTest::keyClick(m_window, Qt::Key_Right);
        }
        return false;
    };
    wind->setProperty("value", 0);
    for (const char *classname : { "calm", "breeze", "storm" }) {
        QVERIFY2(blowUntil(classname), classname);
        QCOMPARE(banner->property("color").value<QColor>(), classColor(classname));
    }
    // At the limit, no sooner.
    QCOMPARE(wind->property("value").toInt(), 14);
    QTest::keyClick(m_window, Qt::Key_Left);
    QCOMPARE(Theme::attachedTheme(banner)->classnames(), QStringLiteral("breeze"));

    // Moving the limit does the same from the other side.
    QQuickItem *limit = item("limit");
    limit->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, Qt::Key_Left);
    QCOMPARE(Theme::attachedTheme(banner)->classnames(), QStringLiteral("storm"));
    choose(QStringLiteral("Shore"));
    QCOMPARE(banner->property("color").value<QColor>(), classColor("storm"));
}

void tst_Settings::stylesAreTheThemes()
{
    open();
    const auto source = [this] {
        return item("monitorButton")->property("source").toUrl().toString();
    };
    for (const char *title : titles) {
        choose(QLatin1String(title));
        const bool isLantern = QLatin1String(title) == QLatin1String("Lantern");
        QVERIFY2(source().endsWith(isLantern ? QStringLiteral("/lantern/styles/Button_primary.qml")
                                             : QStringLiteral("themes/styles/Button_primary.qml")),
                 qPrintable(source()));
        const QList<QQuickItem *> loaded = item("monitorButton")->childItems();
        QCOMPARE(loaded.size(), 1);
        QCOMPARE(loaded.first()->property("text").toString(), QStringLiteral("Open the monitor"));
        // What the style says reaches the application.
        object<QQuickWindow>("monitor")->hide();
        QTest::qWait(10);
        click(item("monitorButton"));
        QVERIFY2(object<QQuickWindow>("monitor")->isVisible(), title);
    }
}

void tst_Settings::togglesAreStored_data()
{
    addThemeRows();
}

void tst_Settings::togglesAreStored()
{
    QFETCH(QString, title);
    open();
    choose(title);
    QTest::qWait(10);
    const auto styled = [this] {
        QList<QQuickItem *> loaders;
        const QList<QQuickItem *> children = item("sound")->childItems();
        for (QQuickItem *child : children) {
            if (child->inherits("QQuickLoader"))
                loaders.append(child->childItems());
        }
        return loaders.value(0);
    };
    QVERIFY(styled());
    QVERIFY(styled()->property("checked").toBool());
    click(styled());
    QVERIFY(!styled()->property("checked").toBool());
    styled()->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, Qt::Key_Space);
    QVERIFY(styled()->property("checked").toBool());
    click(styled());
    open();
    QVERIFY(!item("sound")->property("checked").toBool());
    QVERIFY(!styled()->property("checked").toBool());
}

void tst_Settings::menuOpensTheDialog()
{
    QSettings().setValue(QStringLiteral("limit"), 22);
    open();
    QCOMPARE(item("limit")->property("value").toInt(), 22);
    click(item("menuButton"));
    QTRY_VERIFY(object("menu")->property("opened").toBool());
    const QImage menuPicture = picture();
    const QPoint inMenu = item("monitorMenuItem")->mapToScene(QPointF(200, 4)).toPoint();
    QCOMPARE(menuPicture.pixelColor(inMenu), Theme::global()->colors()->lighterBackground());

    click(item("restoreMenuItem"));
    QTRY_VERIFY(object("dialog")->property("opened").toBool());
    QVERIFY(!object("menu")->property("visible").toBool());
    click(item("acceptButton"));
    QTRY_VERIFY(!object("dialog")->property("visible").toBool());
    QCOMPARE(item("limit")->property("value").toInt(), 14);
}

void tst_Settings::dialogByKeyboard()
{
    QSettings().setValue(QStringLiteral("limit"), 22);
    open();
    click(item("restoreButton"));
    QTRY_VERIFY(object("dialog")->property("opened").toBool());
    QTest::keyClick(m_window, Qt::Key_Escape);
    QTRY_VERIFY(!object("dialog")->property("visible").toBool());
    QCOMPARE(item("limit")->property("value").toInt(), 22);

    click(item("restoreButton"));
    QTRY_VERIFY(object("dialog")->property("opened").toBool());
    QTest::keyClick(m_window, Qt::Key_Tab);
    QTest::keyClick(m_window, Qt::Key_Tab);
    QTest::keyClick(m_window, Qt::Key_Return);
    QTRY_VERIFY(!object("dialog")->property("visible").toBool());
    QCOMPARE(item("limit")->property("value").toInt(), 14);
}

void tst_Settings::monitorFollows()
{
    open();
    auto *monitor = object<QQuickWindow>("monitor");
    QVERIFY(!monitor->isVisible());
    click(item("monitorButton"));
    QVERIFY(QTest::qWaitForWindowExposed(monitor));
    for (const char *title : titles) {
        choose(QLatin1String(title));
        item("wind")->setProperty("value", 8);
        QCOMPARE(monitor->color(), Theme::global()->colors()->background());
        item("wind")->setProperty("value", 30);
        QCOMPARE(monitor->color(), classColor("storm"));
        QCOMPARE(picture(monitor).pixelColor(4, 4), classColor("storm"));
        QList<QQuickItem *> reading;
        collect(monitor->contentItem(), QStringLiteral("reading"), reading);
        QCOMPARE(reading.size(), 1);
        QCOMPARE(reading.first()->property("text").toString(), QStringLiteral("30"));
    }
}

TAVOLINS_TEST_MAIN(tst_Settings)
#include "tst_settings.moc"
