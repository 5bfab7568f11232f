#include "controls/controlstestcase.h"
#include "controls/samples.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtGui/QAccessible>
#include <QtGui/QStyleHints>
#include <QtGui/QWheelEvent>
#include <QtQml/QQmlComponent>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <functional>

/// The controls under real mouse and keyboard, and for those who can't see them.
class tst_ControlInput : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void clickingAButton_data();
    void clickingAButton();
    void spaceOnAButton_data();
    void spaceOnAButton();
    void hoverAndPressAreSeen_data();
    void hoverAndPressAreSeen();
    void holdingADelayButton();
    void typing_data();
    void typing();
    void selectingWithTheMouse_data();
    void selectingWithTheMouse();
    void keysChangeAValue_data();
    void keysChangeAValue();
    void draggingChangesAValue_data();
    void draggingChangesAValue();
    void wheelChangesAValue_data();
    void wheelChangesAValue();
    void clickingThePartsOfASpinBox();
    void choosingInAComboBox();
    void choosingInAComboBoxByKeys();
    void choosingInAMenu();
    void menuBarOpensItsMenus();
    void subMenuOpensByKey();
    void clickingATab();
    void answeringADialog_data();
    void answeringADialog();
    void closingPopups_data();
    void closingPopups();
    void toolTipShowsUp();
    void scrollingAView();
    void clickingAPageIndicator();

    void roleAndName_data();
    void roleAndName();
    void tabGoesThroughAllControls();
    void tabIsTypedIntoATextArea();

private:
    QQuickWindow *showControl(const QByteArray &body);
    static QPoint center(QQuickItem *item);
    static QPoint at(QQuickItem *item, double x, double y);
    static void drag(QQuickWindow *window, QPoint from, QPoint to);
    static QVariant value(QQuickWindow *window) { return window->property("value"); }
    static QColor groundOf(QQuickItem *control);

    /// The control with the id "control".
    QQuickItem *m_control = nullptr;
};

namespace {

const char *const buttons[] = { "Button",       "RoundButton",    "ToolButton",
                                "ItemDelegate", "SwipeDelegate",  "MenuItem",
                                "MenuBarItem",  "AbstractButton", "DelayButton" };
const char *const toggles[] = { "CheckBox", "CheckDelegate",  "RadioButton", "RadioDelegate",
                                "Switch",   "SwitchDelegate", "TabButton" };

const QByteArray buttonContent = "text: \"Text\"; width: 120; height: 40";

} // namespace

void tst_ControlInput::initTestCase()
{
    ControlsTestCase::initTestCase();
    QAccessible::setActive(true);
    // As on a desktop.
    QGuiApplication::styleHints()->setUseHoverEffects(true);
}

void tst_ControlInput::init()
{
    TestCase::init();
    makeCurrent(QStringLiteral("theme.thm"), themeAround(QStringLiteral("Theme"), 100));
}

/// A window with \a body, in which "control" is the id of a control and "value" a property of the
/// window that tells what became of it.
QQuickWindow *tst_ControlInput::showControl(const QByteArray &body)
{
    QQuickWindow *window = show("readonly property Item control: control\n" + body);
    m_control = window ? window->property("control").value<QQuickItem *>() : nullptr;
    if (!m_control || !QTest::qWaitForWindowActive(window))
        return nullptr;
    // Away from everything. Qt 6 leaves out a move to where the last one went, in whatever window.
    QTest::mouseMove(window, QPoint(629, 389));
    QTest::mouseMove(window, QPoint(630, 390));
    picture(window);
    return window;
}

QPoint tst_ControlInput::center(QQuickItem *item)
{
    return at(item, 0.5, 0.5);
}

QPoint tst_ControlInput::at(QQuickItem *item, double x, double y)
{
    return item->mapToScene(QPointF(item->width() * x, item->height() * y)).toPoint();
}

void tst_ControlInput::drag(QQuickWindow *window, QPoint from, QPoint to)
{
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
    for (int step = 1; step <= 5; ++step)
        QTest::mouseMove(window, from + (to - from) * step / 5, 5);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, to, 5);
}

QColor tst_ControlInput::groundOf(QQuickItem *control)
{
    return control->property("background").value<QObject *>()->property("color").value<QColor>();
}

void tst_ControlInput::clickingAButton_data()
{
    QTest::addColumn<QByteArray>("control");
    QTest::addColumn<bool>("isToggle");
    for (const char *name : buttons) {
        if (QByteArray(name) != "DelayButton")
            QTest::newRow(name) << QByteArray(name) << false;
    }
    for (const char *name : toggles)
        QTest::newRow(name) << QByteArray(name) << true;
}

void tst_ControlInput::clickingAButton()
{
    QFETCH(QByteArray, control);
    QFETCH(bool, isToggle);
    QQuickWindow *window = showControl("property int value: 0\n" + control + " { id: control; "
                                       + buttonContent + "; onClicked: ++window.value }");
    QVERIFY(window);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    QCOMPARE(value(window).toInt(), 1);
    QCOMPARE(m_control->property("checked").toBool(), isToggle);
    m_control->setEnabled(false);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    QCOMPARE(value(window).toInt(), 1);
}

void tst_ControlInput::spaceOnAButton_data()
{
    clickingAButton_data();
}

void tst_ControlInput::spaceOnAButton()
{
    QFETCH(QByteArray, control);
    QFETCH(bool, isToggle);
    QQuickWindow *window = showControl("property int value: 0\n" + control + " { id: control; "
                                       + buttonContent + "; onClicked: ++window.value }");
    QVERIFY(window);
    m_control->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Space);
    QCOMPARE(value(window).toInt(), 1);
    QCOMPARE(m_control->property("checked").toBool(), isToggle);
}

void tst_ControlInput::hoverAndPressAreSeen_data()
{
    QTest::addColumn<QByteArray>("control");
    for (const char *name : buttons) {
        if (QByteArray(name) != "AbstractButton")
            QTest::newRow(name) << QByteArray(name);
    }
    QTest::newRow("CheckDelegate") << QByteArray("CheckDelegate");
    QTest::newRow("RadioDelegate") << QByteArray("RadioDelegate");
    QTest::newRow("SwitchDelegate") << QByteArray("SwitchDelegate");
}

/// Four grounds: as it is, under the mouse, held down, and as before.
void tst_ControlInput::hoverAndPressAreSeen()
{
    QFETCH(QByteArray, control);
    QQuickWindow *window = showControl(control + " { id: control; hoverEnabled: true; "
                                       + buttonContent + " }");
    QVERIFY(window);
    const QColor rest = groundOf(m_control);
    QTest::mouseMove(window, center(m_control));
    // Qt 6 tells of it with the next frame.
    QTRY_VERIFY(groundOf(m_control) != rest);
    const QColor hovered = groundOf(m_control);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    const QColor pressed = groundOf(m_control);
    QVERIFY(pressed != rest);
    QVERIFY(pressed != hovered);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    QTRY_COMPARE(groundOf(m_control), hovered);
    QTest::mouseMove(window, QPoint(630, 390));
    QTRY_COMPARE(groundOf(m_control), rest);
}

void tst_ControlInput::holdingADelayButton()
{
    QQuickWindow *window = showControl("property int value: 0\nDelayButton { id: control; delay: "
                                       "100; text: \"Text\"; onActivated: ++window.value }");
    QVERIFY(window);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    QTRY_VERIFY(m_control->property("progress").toReal() > 0);
    QTRY_COMPARE(value(window).toInt(), 1);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    QVERIFY(m_control->property("checked").toBool());
}

void tst_ControlInput::typing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    QTest::newRow("TextField") << QByteArray("TextField { id: control }\nproperty var value: "
                                             "control.text")
                               << QStringLiteral("12");
    QTest::newRow("TextArea") << QByteArray("TextArea { id: control }\nproperty var value: "
                                            "control.text")
                              << QStringLiteral("12");
    QTest::newRow("ComboBox") << QByteArray(
            "ComboBox { id: control; editable: true }\nproperty var "
            "value: control.editText")
                              << QStringLiteral("12");
    QTest::newRow("SpinBox") << QByteArray("SpinBox { id: control; editable: true; value: 5; "
                                           "Component.onCompleted: contentItem.selectAll() }\n"
                                           "property var value: control.value")
                             << QStringLiteral("12");
}

void tst_ControlInput::typing()
{
    QFETCH(QByteArray, body);
    QFETCH(QString, text);
    QQuickWindow *window = showControl(body);
    QVERIFY(window);
    m_control->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_1);
    QTest::keyClick(window, Qt::Key_2);
    QTest::keyClick(window, Qt::Key_Return);
    QCOMPARE(value(window).toString().trimmed(), text);
}

void tst_ControlInput::selectingWithTheMouse_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("TextField") << QByteArray(
            "TextField { id: control; selectByMouse: true; text: \"some words\" }\n"
            "property var value: control.selectedText");
    QTest::newRow("TextArea") << QByteArray(
            "TextArea { id: control; selectByMouse: true; text: \"some words\" }\n"
            "property var value: control.selectedText");
    QTest::newRow("ComboBox") << QByteArray(
            "ComboBox { id: control; editable: true; selectTextByMouse: true; "
            "model: [\"some words\"] }\nproperty var value: control.contentItem.selectedText");
}

/// Selected text has the theme's selection on the color of the text.
void tst_ControlInput::selectingWithTheMouse()
{
    QFETCH(QByteArray, body);
    QQuickWindow *window = showControl(body);
    QVERIFY(window);
    drag(window, at(m_control, 0.07, 0.5), at(m_control, 0.8, 0.5));
    QTRY_COMPARE(value(window).toString(), QStringLiteral("some words"));
    const ThemeObjectColors *colors = ThemeManager::getInstance()->current()->colors();
    const QImage image = picture(window);
    int ground = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ground += image.pixelColor(x, y) == colors->foreground();
    }
    // More than the letters and the frame are.
    QVERIFY(ground > 600);
    QQuickItem *input = find(m_control, [](QQuickItem *item) {
        return item->property("selectedTextColor").isValid();
    });
    QVERIFY(input);
    QCOMPARE(input->property("selectedTextColor").value<QColor>(), colors->selection());
    QCOMPARE(input->property("selectionColor").value<QColor>(), colors->foreground());
}

void tst_ControlInput::keysChangeAValue_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("key");
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("after");
    const auto row = [](const char *name, const QByteArray &body, int key, double before,
                        double after) { QTest::newRow(name) << body << key << before << after; };
    row("Slider", "Slider { id: control; value: 0.5 }\nproperty real value: control.value",
        Qt::Key_Right, 0.5, 0.6);
    row("vertical Slider",
        "Slider { id: control; value: 0.5; orientation: Qt.Vertical }\n"
        "property real value: control.value",
        Qt::Key_Up, 0.5, 0.6);
    row("mirrored Slider",
        "Slider { id: control; value: 0.5; LayoutMirroring.enabled: true }\n"
        "property real value: control.value",
        Qt::Key_Left, 0.5, 0.6);
    row("RangeSlider",
        "RangeSlider { id: control; first.value: 0.2; second.value: 0.7 }\n"
        "property real value: control.first.value",
        Qt::Key_Right, 0.2, 0.3);
    row("Dial", "Dial { id: control; value: 0.5 }\nproperty real value: control.value",
        Qt::Key_Right, 0.5, 0.6);
    row("SpinBox", "SpinBox { id: control; value: 5 }\nproperty real value: control.value",
        Qt::Key_Up, 5, 6);
    row("Tumbler",
        "Tumbler { id: control; model: 9; currentIndex: 3 }\nproperty real value: "
        "control.currentIndex",
        Qt::Key_Down, 3, 4);
    row("wrapping Tumbler",
        "Tumbler { id: control; model: 9; wrap: true; currentIndex: 8 }\nproperty real value: "
        "control.currentIndex",
        Qt::Key_Down, 8, 0);
}

void tst_ControlInput::keysChangeAValue()
{
    QFETCH(QByteArray, body);
    QFETCH(int, key);
    QFETCH(double, before);
    QFETCH(double, after);
    QQuickWindow *window = showControl(body);
    QVERIFY(window);
    m_control->forceActiveFocus(Qt::TabFocusReason);
    QCOMPARE(value(window).toDouble(), before);
    QTest::keyClick(window, Qt::Key(key));
    QTRY_VERIFY(qFuzzyCompare(1 + value(window).toDouble(), 1 + after));
}

void tst_ControlInput::draggingChangesAValue_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    const auto row = [](const char *name, const QByteArray &body, QPointF from, QPointF to) {
        QTest::newRow(name) << body << from << to;
    };
    row("Slider", "Slider { id: control }\nproperty var value: control.value > 0.7", { 0.06, 0.5 },
        { 0.9, 0.5 });
    row("vertical Slider",
        "Slider { id: control; orientation: Qt.Vertical }\nproperty var value: control.value > 0.7",
        { 0.5, 0.94 }, { 0.5, 0.1 });
    row("mirrored Slider",
        "Slider { id: control; LayoutMirroring.enabled: true }\n"
        "property var value: control.value > 0.7",
        { 0.94, 0.5 }, { 0.1, 0.5 });
    row("first of a RangeSlider",
        "RangeSlider { id: control; first.value: 0; second.value: 1 }\n"
        "property var value: control.first.value > 0.3 && control.second.value === 1",
        { 0.06, 0.5 }, { 0.5, 0.5 });
    row("second of a RangeSlider",
        "RangeSlider { id: control; first.value: 0; second.value: 1 }\n"
        "property var value: control.second.value < 0.7 && control.first.value === 0",
        { 0.94, 0.5 }, { 0.5, 0.5 });
    row("Dial", "Dial { id: control }\nproperty var value: control.value > 0.5", { 0.3, 0.9 },
        { 0.95, 0.4 });
    row("Switch", "Switch { id: control; text: \"Text\" }\nproperty var value: control.checked",
        { 0.15, 0.5 }, { 0.9, 0.5 });
    row("Tumbler",
        "Tumbler { id: control; model: 9; currentIndex: 4 }\n"
        "property var value: control.currentIndex < 4",
        { 0.5, 0.4 }, { 0.5, 0.9 });
    row("ScrollBar",
        "ScrollBar { id: control; size: 0.3; height: 200; policy: ScrollBar.AlwaysOn }\n"
        "property var value: control.position > 0.3",
        { 0.5, 0.1 }, { 0.5, 0.7 });
    row("SwipeView",
        "SwipeView { id: control; width: 200; height: 200; Pane { } Pane { } }\n"
        "property var value: control.currentIndex === 1",
        { 0.9, 0.5 }, { 0.1, 0.5 });
    row("SwipeDelegate",
        "SwipeDelegate { id: control; width: 200; text: \"Text\"; swipe.right: Rectangle { width: "
        "80 "
        "} }\nproperty var value: control.swipe.position < 0",
        { 0.9, 0.5 }, { 0.1, 0.5 });
    row("SplitView",
        "SplitView { id: control; width: 200; height: 100; Item { id: side; "
        "SplitView.preferredWidth: "
        "50 } Item { } }\nproperty var value: side.width > 90",
        { 0.265, 0.5 }, { 0.6, 0.5 });
}

void tst_ControlInput::draggingChangesAValue()
{
    QFETCH(QByteArray, body);
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    QQuickWindow *window = showControl(body);
    QVERIFY(window);
    QVERIFY(!value(window).toBool());
    drag(window, at(m_control, from.x(), from.y()), at(m_control, to.x(), to.y()));
    QTRY_VERIFY(value(window).toBool());
}

void tst_ControlInput::wheelChangesAValue_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("Slider") << QByteArray("Slider { id: control; wheelEnabled: true; value: 0.5 }\n"
                                          "property var value: control.value !== 0.5");
    QTest::newRow("Dial") << QByteArray("Dial { id: control; wheelEnabled: true; value: 0.5 }\n"
                                        "property var value: control.value !== 0.5");
    QTest::newRow("SpinBox") << QByteArray("SpinBox { id: control; wheelEnabled: true; value: 5 }\n"
                                           "property var value: control.value !== 5");
    QTest::newRow("ComboBox") << QByteArray(
            "ComboBox { id: control; wheelEnabled: true; model: [1, 2, 3]; currentIndex: 1 }\n"
            "property var value: control.currentIndex !== 1");
}

void tst_ControlInput::wheelChangesAValue()
{
    QFETCH(QByteArray, body);
    QQuickWindow *window = showControl(body);
    QVERIFY(window);
    QVERIFY(!value(window).toBool());
    const QPointF where = center(m_control);
    QWheelEvent event(where, window->mapToGlobal(where.toPoint()), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
    QVERIFY(value(window).toBool());
}

void tst_ControlInput::clickingThePartsOfASpinBox()
{
    QQuickWindow *window = showControl("SpinBox { id: control; value: 1; to: 2 }\n"
                                       "property int value: control.value\n"
                                       "property Item up: control.up.indicator\n"
                                       "property Item down: control.down.indicator");
    QVERIFY(window);
    auto *up = window->property("up").value<QQuickItem *>();
    auto *down = window->property("down").value<QQuickItem *>();
    const auto click = [window](QQuickItem *item) {
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(item));
        return value(window).toInt();
    };
    QCOMPARE(click(up), 2);
    QCOMPARE(click(up), 2);
    QCOMPARE(click(down), 1);
    QCOMPARE(click(down), 0);
}

void tst_ControlInput::choosingInAComboBox()
{
    QQuickWindow *window = showControl("ComboBox { id: control; model: [\"One\", \"Two\"] }\n"
                                       "property int value: control.currentIndex");
    QVERIFY(window);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(m_control));
    auto *popup = m_control->property("popup").value<QObject *>();
    QTRY_VERIFY(popup->property("opened").toBool());
    QQuickItem *second = find(window->contentItem(), [](QQuickItem *item) {
        return item->inherits("QQuickItemDelegate")
                && item->property("text").toString() == QLatin1String("Two");
    });
    QVERIFY(second);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(second));
    QTRY_VERIFY(!popup->property("visible").toBool());
    QCOMPARE(value(window).toInt(), 1);
}

void tst_ControlInput::choosingInAComboBoxByKeys()
{
    QQuickWindow *window = showControl("ComboBox { id: control; model: [\"One\", \"Two\"] }\n"
                                       "property int value: control.currentIndex");
    QVERIFY(window);
    m_control->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Space);
    auto *popup = m_control->property("popup").value<QObject *>();
    QTRY_VERIFY(popup->property("opened").toBool());
    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Return);
    QTRY_VERIFY(!popup->property("visible").toBool());
    QCOMPARE(value(window).toInt(), 1);
}

void tst_ControlInput::choosingInAMenu()
{
    QQuickWindow *window = showControl(
            "property string value\nItem { id: control }\n"
            "Menu { id: menu; MenuItem { text: \"One\"; onTriggered: window.value = text } "
            "MenuItem { "
            "id: on; text: \"On\"; checkable: true; onTriggered: window.value = text } }\n"
            "function open() { menu.open() }\nproperty bool isOpen: menu.opened\n"
            "property bool isOn: on.checked");
    QVERIFY(window);
    const auto open = [window]() {
        QMetaObject::invokeMethod(window, "open");
        return QTest::qWaitFor([window]() { return window->property("isOpen").toBool(); });
    };
    QVERIFY(open());
    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Return);
    QTRY_COMPARE(value(window).toString(), QStringLiteral("One"));
    QTRY_VERIFY(!window->property("isOpen").toBool());

    QVERIFY(open());
    QQuickItem *on = find(window->contentItem(), [](QQuickItem *item) {
        return item->inherits("QQuickMenuItem")
                && item->property("text").toString() == QLatin1String("On");
    });
    QVERIFY(on);
    QTest::mouseMove(window, center(on));
    QTRY_VERIFY(on->property("highlighted").toBool());
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(on));
    QTRY_COMPARE(value(window).toString(), QStringLiteral("On"));
    QVERIFY(window->property("isOn").toBool());
}

void tst_ControlInput::menuBarOpensItsMenus()
{
    QQuickWindow *window = showControl(
            "MenuBar { id: control; Menu { id: file; title: \"File\"; MenuItem { text: \"Open\" } "
            "} "
            "Menu { id: edit; title: \"Edit\"; MenuItem { text: \"Undo\" } } }\n"
            "property bool isFile: file.opened\nproperty bool isEdit: edit.opened");
    QVERIFY(window);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at(m_control, 0.25, 0.5));
    QTRY_VERIFY(window->property("isFile").toBool());
    QTest::keyClick(window, Qt::Key_Right);
    QTRY_VERIFY(window->property("isEdit").toBool());
    QVERIFY(!window->property("isFile").toBool());
}

void tst_ControlInput::subMenuOpensByKey()
{
    QQuickWindow *window = showControl(
            "Item { id: control }\n"
            "Menu { id: menu; Menu { id: more; title: \"More\"; MenuItem { text: \"One\" } } }\n"
            "function open() { menu.open() }\nproperty bool isOpen: menu.opened\n"
            "property bool isMoreOpen: more.opened");
    QVERIFY(window);
    QMetaObject::invokeMethod(window, "open");
    QTRY_VERIFY(window->property("isOpen").toBool());
    QTest::keyClick(window, Qt::Key_Down);
    QTest::keyClick(window, Qt::Key_Right);
    QTRY_VERIFY(window->property("isMoreOpen").toBool());
    QTest::keyClick(window, Qt::Key_Left);
    QTRY_VERIFY(!window->property("isMoreOpen").toBool());
    QVERIFY(window->property("isOpen").toBool());
}

void tst_ControlInput::clickingATab()
{
    QQuickWindow *window = showControl("TabBar { id: control; width: 200; TabButton { text: \"1\" "
                                       "} TabButton { text: \"2\" } }\n"
                                       "property int value: control.currentIndex");
    QVERIFY(window);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at(m_control, 0.75, 0.5));
    QCOMPARE(value(window).toInt(), 1);
}

void tst_ControlInput::answeringADialog_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("answer");
    QTest::newRow("by the button that accepts") << QStringLiteral("OK") << QStringLiteral("yes");
    QTest::newRow("by the button that rejects") << QStringLiteral("Cancel") << QStringLiteral("no");
    QTest::newRow("by Escape") << QString() << QStringLiteral("no");
}

void tst_ControlInput::answeringADialog()
{
    QFETCH(QString, button);
    QFETCH(QString, answer);
    QQuickWindow *window = showControl(
            "property string value\nItem { id: control }\n"
            "Dialog { id: dialog; modal: true; visible: true; title: \"Title\"; standardButtons: "
            "Dialog.Ok | Dialog.Cancel; onAccepted: window.value = \"yes\"; onRejected: "
            "window.value = "
            "\"no\" }\nproperty bool isOpen: dialog.opened");
    QVERIFY(window);
    QTRY_VERIFY(window->property("isOpen").toBool());
    if (button.isEmpty()) {
        QTest::keyClick(window, Qt::Key_Escape);
    } else {
        QQuickItem *item = find(window->contentItem(), [&button](QQuickItem *child) {
            return child->inherits("QQuickButton") && child->property("text").toString() == button;
        });
        QVERIFY(item);
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, center(item));
    }
    QTRY_COMPARE(value(window).toString(), answer);
    QTRY_VERIFY(!window->property("isOpen").toBool());
}

void tst_ControlInput::closingPopups_data()
{
    QTest::addColumn<QByteArray>("popup");
    QTest::addColumn<bool>("byMouse");
    for (const char *name : { "Popup", "Drawer", "Menu" }) {
        const QByteArray popup = QByteArray(name)
                + " { id: popup; visible: true; width: 100; height: 100; "
                + (QByteArray(name) == "Menu" ? "" : "modal: true; ") + "focus: true }";
        QTest::addRow("%s, by Escape", name) << popup << false;
        QTest::addRow("%s, by a click outside", name) << popup << true;
    }
}

void tst_ControlInput::closingPopups()
{
    QFETCH(QByteArray, popup);
    QFETCH(bool, byMouse);
    QQuickWindow *window = showControl("Item { id: control }\n" + popup
                                       + "\nproperty bool isOpen: popup.opened; property bool "
                                         "value: popup.visible");
    QVERIFY(window);
    QTRY_VERIFY(window->property("isOpen").toBool());
    // Beside it: Qt 6.4 leaves a drawer open, in every style, where the click is below it.
    if (byMouse)
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, QPoint(600, 50));
    else
        QTest::keyClick(window, Qt::Key_Escape);
    QTRY_VERIFY(!value(window).toBool());
}

void tst_ControlInput::toolTipShowsUp()
{
    QQuickWindow *window = showControl(
            "Button { id: control; y: 100; hoverEnabled: true; text: \"Text\"\n"
            "ToolTip.visible: hovered; ToolTip.text: \"Tip\" }\n"
            "property bool value: control.ToolTip.toolTip.visible");
    QVERIFY(window);
    QVERIFY(!value(window).toBool());
    QTest::mouseMove(window, center(m_control));
    QTRY_VERIFY(value(window).toBool());
    const QQuickItem *tip = find(window->contentItem(), [](QQuickItem *item) {
        return item->property("text").toString() == QLatin1String("Tip") && item->isVisible();
    });
    QVERIFY(tip);
    QCOMPARE(tip->property("color").value<QColor>(),
             ThemeManager::getInstance()->current()->colors()->foreground());
}

void tst_ControlInput::scrollingAView()
{
    QQuickWindow *window = showControl(
            "ScrollView { id: control; width: 100; height: 100; contentHeight: 1000; Item { } }\n"
            "property real value: control.contentItem.contentY");
    QVERIFY(window);
    const QPointF where = center(m_control);
    QWheelEvent event(where, window->mapToGlobal(where.toPoint()), QPoint(), QPoint(0, -240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(window, &event);
    QTRY_VERIFY(value(window).toReal() > 10);
}

void tst_ControlInput::clickingAPageIndicator()
{
    QQuickWindow *window = showControl(
            "PageIndicator { id: control; count: 3; interactive: true }\n"
            "property int value: control.currentIndex");
    QVERIFY(window);
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, at(m_control, 0.75, 0.5));
    QCOMPARE(value(window).toInt(), 2);
}

void tst_ControlInput::roleAndName_data()
{
    addControlRows();
}

/// Those who read the screen aloud are told what Qt's own style tells them.
void tst_ControlInput::roleAndName()
{
    QFETCH(QString, control);
    const QByteArray body = control.toLatin1() + " { id: control }";
    QObject *ours = create(body);
    QVERIFY(ours);
    QQmlComponent component(engine(), QUrl::fromLocalFile(Samples::qtFile(control)));
    const std::unique_ptr<QObject> theirs(component.create());
    QVERIFY2(theirs, qPrintable(component.errorString()));
    for (QObject *object : { ours, theirs.get() }) {
        if (object->property("text").isValid())
            object->setProperty("text", QStringLiteral("Text"));
        if (object->property("title").isValid())
            object->setProperty("title", QStringLiteral("Title"));
    }
    // A popup has its role on the item that it makes.
    const auto interfaceOf = [](QObject *object) {
        auto *content = object->property("contentItem").value<QQuickItem *>();
        const bool isItem = object->isWindowType() || qobject_cast<QQuickItem *>(object);
        return QAccessible::queryAccessibleInterface(isItem ? object : content->parentItem());
    };
    QAccessibleInterface *our = interfaceOf(ours);
    QAccessibleInterface *their = interfaceOf(theirs.get());
    QCOMPARE(our == nullptr, their == nullptr);
    if (!our)
        return;
    QCOMPARE(our->role(), their->role());
    QCOMPARE(our->text(QAccessible::Name), their->text(QAccessible::Name));
    QCOMPARE(our->state().checkable, their->state().checkable);
    QCOMPARE(our->state().focusable, their->state().focusable);
    QCOMPARE(our->state().editable, their->state().editable);
}

/// Each control that can have the focus gets it, and those behind it in the other direction.
void tst_ControlInput::tabGoesThroughAllControls()
{
    QByteArray page;
    const QStringList controls = Samples::controls();
    for (const QString &control : controls) {
        // What is typed into a text area stays there.
        if (control != QLatin1String("ApplicationWindow") && !Samples::isPopup(control))
            page += Samples::looks(control,
                                   control == QLatin1String("TextArea") ? "readOnly: true" : "")
                            .join();
    }
    QQuickWindow *window = showControl("Flow { id: control; objectName: \"samples\"; width: 640\n"
                                       + page + " }");
    QVERIFY(window);
    QList<QQuickItem *> wanted;
    const QList<QQuickItem *> all = samples(window);
    for (QQuickItem *item : all) {
        if (item->activeFocusOnTab())
            wanted.append(item);
    }
    QVERIFY(wanted.size() > 30);

    const auto walk = [window](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QList<QQuickItem *> walked;
        // Twice as far as it can be.
        while (walked.size() < 300) {
            QTest::keyClick(window, key, modifiers);
            QQuickItem *item = window->activeFocusItem();
            if (!walked.isEmpty() && item == walked.first())
                break;
            walked.append(item);
        }
        return walked;
    };
    const QList<QQuickItem *> forwards = walk(Qt::Key_Tab, Qt::NoModifier);
    QVERIFY(forwards.size() < 300);
    // The focus of a control may be on a part of it.
    const auto isReached = [&forwards](QQuickItem *item) {
        return std::any_of(forwards.begin(), forwards.end(), [item](QQuickItem *focused) {
            return focused == item || item->isAncestorOf(focused);
        });
    };
    for (QQuickItem *item : qAsConst(wanted))
        QVERIFY2(isReached(item), item->metaObject()->className());

    QList<QQuickItem *> backwards = walk(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(backwards.size(), forwards.size());
    for (QQuickItem *item : forwards)
        QVERIFY2(backwards.contains(item), item->metaObject()->className());
}

/// As in every style; the key for those who want to leave is Shift+Tab.
void tst_ControlInput::tabIsTypedIntoATextArea()
{
    QQuickWindow *window = showControl("Column { TextField { } TextArea { id: control } }\n"
                                       "property string value: control.text");
    QVERIFY(window);
    m_control->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window, Qt::Key_Tab);
    QCOMPARE(value(window).toString(), QStringLiteral("\t"));
    QTest::keyClick(window, Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(!m_control->hasActiveFocus());
}

TAVOLINS_TEST_MAIN(tst_ControlInput)
#include "tst_controlinput.moc"
