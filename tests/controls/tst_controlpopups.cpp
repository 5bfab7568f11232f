#include "controls/controlstestcase.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtGui/QPalette>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

/// What lies outside of the window's own items: popups of each kind, further windows; and whose
/// font and palette all of them have.
class tst_ControlPopups : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void popupFollows_data();
    void popupFollows();
    void secondWindowFollows_data();
    void secondWindowFollows();
    void windowHasFontAndPaletteOfTheTheme_data();
    void windowHasFontAndPaletteOfTheTheme();
    void ownFontAndPaletteWin_data();
    void ownFontAndPaletteWin();
    void popupInAPlainWindow();
    void menuIsAsWideAsItsWidestItem_data();
    void menuIsAsWideAsItsWidestItem();
    void menuStaysInItsWindow();

private:
    QQuickWindow *showPopup(const QByteArray &body);
    void open(QQuickWindow *window);
    void close(QQuickWindow *window);

    QByteArray m_first;
    QByteArray m_second;
};

namespace {

enum When { Open, Closed, OpenedBefore };

Theme &current()
{
    return *ThemeManager::getInstance()->current();
}

} // namespace

void tst_ControlPopups::initTestCase()
{
    ControlsTestCase::initTestCase();
    m_first = themeAround(QStringLiteral("First"), 10);
    m_second = themeAround(QStringLiteral("Second"), 190, 17);
}

/// \a body has an object with the id "popup" that can be opened.
QQuickWindow *tst_ControlPopups::showPopup(const QByteArray &body)
{
    return show("property QtObject popup: popup\n" + body);
}

void tst_ControlPopups::open(QQuickWindow *window)
{
    auto *popup = window->property("popup").value<QObject *>();
    QVERIFY(QMetaObject::invokeMethod(popup, "open"));
    QTRY_VERIFY(popup->property("opened").toBool());
}

void tst_ControlPopups::close(QQuickWindow *window)
{
    auto *popup = window->property("popup").value<QObject *>();
    QVERIFY(QMetaObject::invokeMethod(popup, "close"));
    QTRY_VERIFY(!popup->property("visible").toBool());
}

void tst_ControlPopups::popupFollows_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("when");
    const auto rows = [](const char *name, const QByteArray &body) {
        QTest::addRow("%s, open", name) << body << int(Open);
        QTest::addRow("%s, not opened yet", name) << body << int(Closed);
        QTest::addRow("%s, opened before", name) << body << int(OpenedBefore);
    };
    const QByteArray items = "MenuItem { text: \"One\" } MenuItem { text: \"On\"; checkable: true; "
                             "checked: true } MenuSeparator { } ";
    rows("Popup", "Popup { id: popup; Label { text: \"Text\" } }");
    rows("modal Popup", "Popup { id: popup; modal: true; Label { text: \"Text\" } }");
    rows("dimming Popup", "Popup { id: popup; dim: true; Label { text: \"Text\" } }");
    rows("Dialog",
         "Dialog { id: popup; modal: true; title: \"Title\"; standardButtons: Dialog.Ok | "
         "Dialog.Cancel; TextField { placeholderText: \"Name\" } }");
    rows("Drawer", "Drawer { id: popup; width: 120; height: 300; Button { text: \"Text\" } }");
    rows("Menu", "Menu { id: popup; " + items + " Action { text: \"Action\" } }");
    rows("sub-menu",
         "Menu { id: outer; " + items + " Menu { id: inner; title: \"More\"; " + items
                 + " } }\n"
                   "Item { id: popup; readonly property bool opened: inner.opened; visible: "
                   "inner.visible; "
                   "function open() { outer.open(); inner.open() } function close() { "
                   "inner.close(); outer.close() } }");
    rows("ToolTip", "ToolTip { id: popup; y: 100; text: \"Text\" }");
    // The popup of a box can't have an id here.
    rows("ComboBox",
         "ComboBox { id: box; model: [\"One\", \"Two\", \"Three\"] }\n"
         "Item { id: popup; readonly property bool opened: box.popup.opened; "
         "visible: box.popup.visible; function open() { box.popup.open() } "
         "function close() { box.popup.close() } }");
    rows("of a class",
         "Dialog { id: popup; title: \"Title\"; standardButtons: Dialog.Ok; Theme.classnames: "
         "\"danger\" }");
}

/// A popup looks like one that is made and opened under the current theme, wherever it was during
/// the switch.
void tst_ControlPopups::popupFollows()
{
    QFETCH(QByteArray, body);
    QFETCH(int, when);
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = showPopup(body);
    QVERIFY(window);
    if (when != Closed)
        open(window);
    if (when == OpenedBefore)
        close(window);
    const Colors before = colors(window);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    if (when != Open)
        open(window);

    QQuickWindow *fresh = showPopup(body);
    QVERIFY(fresh);
    open(fresh);
    const Colors seen = colors(window);
    const Colors wanted = colors(fresh);
    QCOMPARE(seen.keys(), wanted.keys());
    for (auto it = seen.constBegin(); it != seen.constEnd(); ++it) {
        QVERIFY2(it.value() == wanted.value(it.key()), qPrintable(it.key()));
        if (when == Open && before.contains(it.key()) && it.value().alpha() > 0)
            QVERIFY2(before.value(it.key()) != it.value(), qPrintable(it.key()));
    }
    QCOMPARE(picture(window), picture(fresh));
}

void tst_ControlPopups::secondWindowFollows_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::newRow("with controls only") << QByteArray("Window");
    QTest::newRow("of its own style") << QByteArray("ApplicationWindow");
}

void tst_ControlPopups::secondWindowFollows()
{
    QFETCH(QByteArray, type);
    const QByteArray body = "readonly property Window second: second\n" + type
            + " { id: second; visible: true; width: 200; height: 200\n"
              "Column { Button { text: \"Text\" } TextField { text: \"Text\" } CheckBox { checked: "
              "true } } }";
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = show(body);
    QVERIFY(window);
    auto *second = window->property("second").value<QQuickWindow *>();
    const Colors before = colors(second);
    makeCurrent(QStringLiteral("second.thm"), m_second);
    QQuickWindow *fresh = show(body);
    QVERIFY(fresh);
    QCOMPARE(colors(second), colors(fresh->property("second").value<QQuickWindow *>()));
    const Colors after = colors(second);
    QVERIFY(after.size() >= 6);
    for (auto it = after.constBegin(); it != after.constEnd(); ++it)
        QVERIFY2(it.value() != before.value(it.key()) || it.value().alpha() == 0,
                 qPrintable(it.key()));
    if (type == "ApplicationWindow")
        QCOMPARE(second->color(), current().colors()->background());
}

void tst_ControlPopups::windowHasFontAndPaletteOfTheTheme_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("an item in the window") << QByteArray("Control { id: seen }");
    QTest::newRow("an item in a popup")
            << QByteArray("Popup { visible: true; Control { id: seen } }");
    QTest::newRow("an item in a dialog")
            << QByteArray("Dialog { visible: true; Control { id: seen } }");
    QTest::newRow("an item in a drawer")
            << QByteArray("Drawer { visible: true; Control { id: seen } }");
    QTest::newRow("an item in a menu")
            << QByteArray("Menu { visible: true; MenuItem { contentItem: Control { id: seen } } }");
}

/// What knows nothing of themes has them by way of font and palette.
void tst_ControlPopups::windowHasFontAndPaletteOfTheTheme()
{
    QFETCH(QByteArray, body);
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = show("readonly property Item seen: seen\n" + body);
    QVERIFY(window);
    auto *seen = window->property("seen").value<QObject *>();
    for (const QByteArray &text : { m_first, m_second }) {
        makeCurrent(QStringLiteral("next.thm"), text);
        const ThemeObjectColors *colors = current().colors();
        QCOMPARE(seen->property("font").value<QFont>(), current().fonts()->mainFont());
        const auto role = [seen](const char *name) {
            return QQmlProperty(seen, QLatin1String("palette.") + QLatin1String(name))
                    .read()
                    .value<QColor>();
        };
        QCOMPARE(role("window"), colors->background());
        QCOMPARE(role("windowText"), colors->foreground());
        QCOMPARE(role("base"), colors->background());
        QCOMPARE(role("text"), colors->foreground());
        QCOMPARE(role("button"), colors->lighterBackground());
        QCOMPARE(role("buttonText"), colors->foreground());
        QCOMPARE(role("highlight"), colors->foreground());
        QCOMPARE(role("highlightedText"), colors->selection());
        QCOMPARE(role("toolTipText"), colors->foreground());
    }
}

void tst_ControlPopups::ownFontAndPaletteWin_data()
{
    windowHasFontAndPaletteOfTheTheme_data();
}

/// An application's own font and palette stay through switches, in its popups as well.
void tst_ControlPopups::ownFontAndPaletteWin()
{
    QFETCH(QByteArray, body);
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = show("font.family: \"DejaVu Serif\"; font.pixelSize: 31\n"
                                "palette.button: \"#123456\"; palette.windowText: \"#654321\"\n"
                                "readonly property Item seen: seen\n"
                                + body);
    QVERIFY(window);
    auto *seen = window->property("seen").value<QObject *>();
    for (const QByteArray &text : { m_first, m_second }) {
        makeCurrent(QStringLiteral("next.thm"), text);
        const QFont font = seen->property("font").value<QFont>();
        QCOMPARE(font.family(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(font.pixelSize(), 31);
        QCOMPARE(QQmlProperty(seen, QStringLiteral("palette.button")).read().value<QColor>(),
                 QColor(0x12, 0x34, 0x56));
        QCOMPARE(QQmlProperty(seen, QStringLiteral("palette.windowText")).read().value<QColor>(),
                 QColor(0x65, 0x43, 0x21));
    }
}

/// A popup of a window that has neither font nor palette has those of the theme itself.
void tst_ControlPopups::popupInAPlainWindow()
{
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QObject *window = create("Window { id: window; visible: true; width: 200; height: 200\n"
                             "readonly property QtObject popup: popup\n"
                             "readonly property Item seen: seen\n"
                             "Popup { id: popup; visible: true; Control { id: seen } } }");
    QVERIFY(window);
    auto *seen = window->property("seen").value<QObject *>();
    for (const QByteArray &text : { m_first, m_second }) {
        makeCurrent(QStringLiteral("next.thm"), text);
        QCOMPARE(seen->property("font").value<QFont>(), current().fonts()->mainFont());
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        // In Qt 6 popups have their window's palette: one of their own would not follow a switch.
        QCOMPARE(QQmlProperty(seen, QStringLiteral("palette.windowText")).read().value<QColor>(),
                 current().colors()->foreground());
#endif
    }
}

void tst_ControlPopups::menuIsAsWideAsItsWidestItem_data()
{
    QTest::addColumn<QByteArray>("content");
    // Each of them is wider while the window is generous.
    QTest::newRow("a longer text")
            << QByteArray("MenuItem { text: \"Cut\" } MenuItem { text: window.isGenerous ? "
                          "\"Settings of the whole window\" : \"Settings\" } MenuSeparator { }");
    QTest::newRow("a longer text of an action")
            << QByteArray("Action { text: window.isGenerous ? \"Settings of the whole window\" : "
                          "\"Settings\" } MenuItem { text: \"Cut\" }");
    QTest::newRow("a longer title of a sub-menu")
            << QByteArray("MenuItem { text: \"Cut\" } Menu { title: window.isGenerous ? "
                          "\"Settings of the whole window\" : \"Settings\" }");
    QTest::newRow("a larger font")
            << QByteArray("font.pixelSize: window.isGenerous ? 44 : 14; MenuItem { text: \"Cut\" } "
                          "MenuItem { text: \"Settings\" }");
    QTest::newRow("a box to be checked")
            << QByteArray("MenuItem { text: \"Settings of a window\"; checkable: "
                          "window.isGenerous } MenuItem { text: \"Cut\" }");
    QTest::newRow("one item more")
            << QByteArray("MenuItem { text: \"Cut\" }\n"
                          "Instantiator { active: window.isGenerous\n"
                          "MenuItem { text: \"Settings of the whole window\" }\n"
                          "onObjectAdded: function(index, item) { popup.addItem(item) }\n"
                          "onObjectRemoved: function(index, item) { popup.removeItem(item) } }");
}

/// At once, and narrower again, whether it is open meanwhile or not; and all its items are as wide.
void tst_ControlPopups::menuIsAsWideAsItsWidestItem()
{
    QFETCH(QByteArray, content);
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = showPopup("property bool isGenerous: false\n"
                                     "Menu { id: popup\n"
                                     + content + " }");
    QVERIFY(window);
    auto *menu = window->property("popup").value<QObject *>();
    const auto itemAt = [menu](int index) {
        QQuickItem *item = nullptr;
        QMetaObject::invokeMethod(menu, "itemAt", QGenericReturnArgument("QQuickItem*", &item),
                                  Q_ARG(int, index));
        return item;
    };
    const auto check = [menu, itemAt]() {
        qreal widest = 0;
        const int count = menu->property("count").toInt();
        for (int i = 0; i < count; ++i)
            widest = std::max(widest, itemAt(i)->implicitWidth());
        QVERIFY(widest > 0);
        QCOMPARE(menu->property("availableWidth").toReal(), widest);
        for (int i = 0; i < count; ++i)
            QCOMPARE(itemAt(i)->width(), widest);
    };
    open(window);
    check();
    const qreal narrow = menu->property("width").toReal();
    for (const bool isOpen : { true, false }) {
        for (const bool isGenerous : { true, false }) {
            if (!isOpen)
                close(window);
            window->setProperty("isGenerous", isGenerous);
            open(window);
            check();
            if (isGenerous)
                QVERIFY(menu->property("width").toReal() > narrow);
            else
                QCOMPARE(menu->property("width").toReal(), narrow);
        }
    }
}

void tst_ControlPopups::menuStaysInItsWindow()
{
    makeCurrent(QStringLiteral("first.thm"), m_first);
    QQuickWindow *window = showPopup("Menu { id: popup; MenuItem { text: \"Cut\" }\n"
                                     "MenuItem { text: \"word \".repeat(60) } }");
    QVERIFY(window);
    open(window);
    QCOMPARE(window->property("popup").value<QObject *>()->property("width").toReal(),
             qreal(window->width()));
}

TAVOLINS_TEST_MAIN(tst_ControlPopups)
#include "tst_controlpopups.moc"
