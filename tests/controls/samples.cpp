#include "controls/samples.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLibraryInfo>
#include <QtCore/QMap>

#include <algorithm>
#include <iterator>

namespace {

const char *const popups[] = { "Dialog", "Drawer", "Menu", "Popup", "ToolTip" };

// In Qt's folder, but no style has them: there is nothing to be seen of them.
// The last line is new in Qt 6, where we leave it to Basic.
const char *const unstyled[] = {
    "Action",    "ActionGroup",        "ButtonGroup",      "Container",
    "Control",   "Calendar",           "CalendarModel",    "DayOfWeekRow",
    "MonthGrid", "SelectionRectangle", "TreeViewDelegate", "WeekNumberColumn"
};

template <size_t Count>
bool contains(const char *const (&names)[Count], const QString &name)
{
    return std::any_of(std::begin(names), std::end(names),
                       [&name](const char *other) { return name == QLatin1String(other); });
}

/// What is written into a control so that all its parts are seen; a control without an entry is
/// seen without any. The headers' tables have no array as their model: in every style, Qt 6.4
/// crashes where one of those is laid out anew.
const QMap<QByteArray, QList<QByteArray>> &contents()
{
    static const QByteArray button = "text: \"Text\"; icon.source: iconFile; ";
    static const QByteArray shownPopup = "visible: true; ";
    static const QMap<QByteArray, QList<QByteArray>> table = {
        { "BusyIndicator", { "running: true" } },
        { "Button",
          { button, button + "highlighted: true", button + "checked: true",
            button + "flat: true" } },
        { "CheckBox",
          { "text: \"Text\"", "text: \"Text\"; checked: true",
            "text: \"Text\"; tristate: true; checkState: Qt.PartiallyChecked" } },
        { "CheckDelegate",
          { button, button + "checked: true", button + "highlighted: true; checked: true" } },
        { "ComboBox",
          { "model: [\"One\", \"Two\"]", "model: [\"One\", \"Two\"]; flat: true",
            "model: [\"One\", \"Two\"]; editable: true" } },
        { "DelayButton",
          { "text: \"Text\"; progress: 0.5", "text: \"Text\"; checked: true; progress: 1" } },
        { "Dial", { "value: 0.3" } },
        { "Dialog",
          { shownPopup
            + "title: \"Title\"; standardButtons: Dialog.Ok | Dialog.Cancel; Label { text: "
              "\"Text\" }" } },
        { "DialogButtonBox", { "standardButtons: DialogButtonBox.Ok | DialogButtonBox.Cancel" } },
        { "Drawer", { shownPopup + "width: 100; height: 200; Label { text: \"Text\" }" } },
        { "Frame", { "Label { text: \"Text\" }" } },
        { "GroupBox", { "title: \"Title\"; Label { text: \"Text\"; width: parent.width }" } },
        { "HorizontalHeaderView",
          { "syncView: TableView { parent: window.contentItem; y: 300; width: 220; height: 60; "
            "model: 1; delegate: Item { implicitWidth: 200; implicitHeight: 50 } } model: "
            "[\"Head\"]" } },
        { "ItemDelegate", { button, button + "highlighted: true" } },
        { "Label", { "text: \"Text\"", "text: \"<a href='x'>Link</a>\"" } },
        { "Menu",
          { shownPopup
            + "MenuItem { text: \"Item\" } MenuItem { text: \"On\"; checkable: true; checked: true "
              "} "
              "MenuSeparator { } Menu { title: \"More\" } Action { text: \"Action\" }" } },
        { "MenuBar", { "Menu { title: \"File\" } Menu { title: \"Edit\" }" } },
        { "MenuBarItem", { button, button + "highlighted: true" } },
        { "MenuItem",
          { button, button + "highlighted: true", button + "checkable: true; checked: true" } },
        { "Page",
          { "header: Label { text: \"Head\" } footer: Label { text: \"Foot\" } "
            "Label { text: \"Text\"; width: parent.width }" } },
        { "PageIndicator", { "count: 3; currentIndex: 1" } },
        { "Pane", { "Label { text: \"Text\" }" } },
        { "Popup", { shownPopup + "Label { text: \"Text\" }" } },
        { "ProgressBar", { "value: 0.5" } },
        { "RadioButton", { "text: \"Text\"", "text: \"Text\"; checked: true" } },
        { "RadioDelegate",
          { button, button + "checked: true", button + "highlighted: true; checked: true" } },
        { "RangeSlider",
          { "first.value: 0.2; second.value: 0.6",
            "first.value: 0.2; second.value: 0.6; orientation: Qt.Vertical; height: 90" } },
        { "RoundButton",
          { button, button + "highlighted: true", button + "checked: true",
            button + "flat: true" } },
        { "ScrollBar", { "size: 0.4; position: 0.2; policy: ScrollBar.AlwaysOn; height: 60" } },
        { "ScrollIndicator", { "size: 0.4; position: 0.2; active: true; height: 60" } },
        { "ScrollView",
          { "width: 60; height: 40; ScrollBar.vertical.policy: ScrollBar.AlwaysOn; "
            "contentHeight: 90; Item { }" } },
        { "Slider", { "value: 0.4", "value: 0.4; orientation: Qt.Vertical; height: 90" } },
        { "SpinBox", { "value: 42", "value: 42; editable: true" } },
        { "SplitView",
          { "width: 90; height: 40; Item { SplitView.preferredWidth: 30 } Item { }",
            "width: 40; height: 90; orientation: Qt.Vertical; Item { SplitView.preferredHeight: 30 "
            "} "
            "Item { }" } },
        { "StackView", { "width: 40; height: 40; initialItem: Item { }" } },
        { "SwipeDelegate", { button, button + "highlighted: true" } },
        { "SwipeView", { "width: 40; height: 40; Item { }" } },
        { "Switch", { "text: \"Text\"", "text: \"Text\"; checked: true" } },
        { "SwitchDelegate",
          { button, button + "checked: true", button + "highlighted: true; checked: true" } },
        { "TabBar", { "width: 300; TabButton { text: \"One\" } TabButton { text: \"Two\" }" } },
        { "TabButton", { button, button + "checked: true" } },
        { "TextArea", { "text: \"Text\"", "placeholderText: \"Placeholder\"" } },
        { "TextField", { "text: \"Text\"", "placeholderText: \"Placeholder\"" } },
        { "ToolBar", { "Label { text: \"Text\" }" } },
        { "ToolButton", { button, button + "highlighted: true", button + "checked: true" } },
        { "ToolTip", { shownPopup + "text: \"Text\"; y: 40" } },
        { "Tumbler", { "model: 5; currentIndex: 2; visibleItemCount: 3" } },
        { "VerticalHeaderView",
          { "syncView: TableView { parent: window.contentItem; y: 300; width: 220; height: 60; "
            "model: 1; delegate: Item { implicitWidth: 200; implicitHeight: 50 } } model: "
            "[\"Head\"]" } },
    };
    return table;
}

} // namespace

QString Samples::qtFile(const QString &control, const QString &style)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QString folder = QLibraryInfo::path(QLibraryInfo::QmlImportsPath)
            + QStringLiteral("/QtQuick/Controls/")
            + (style.isEmpty() ? QStringLiteral("Basic") : style);
#else
    const QString folder = QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath)
            + QStringLiteral("/QtQuick/Controls.2/") + style;
#endif
    return folder + QLatin1Char('/') + control + QStringLiteral(".qml");
}

QStringList Samples::controls()
{
    const QDir qtStyle = QFileInfo(qtFile(QStringLiteral("Button"))).dir();
    QStringList names;
    const QStringList files = qtStyle.entryList({ QStringLiteral("*.qml") }, QDir::Files);
    for (const QString &file : files) {
        const QString name = file.section(QLatin1Char('.'), 0, 0);
        if (!contains(unstyled, name))
            names.append(name);
    }
    return names;
}

bool Samples::isPopup(const QString &control)
{
    return contains(popups, control);
}

bool Samples::paintsNothing(const QString &control)
{
    static const char *const controls[] = { "AbstractButton", "StackView", "SwipeView" };
    return contains(controls, control);
}

QList<QByteArray> Samples::looks(const QString &control, const QByteArray &common)
{
    QList<QByteArray> looks;
    const QList<QByteArray> bodies = contents().value(control.toLatin1(), { QByteArray() });
    for (const QByteArray &body : bodies)
        looks.append(control.toLatin1() + " {\n" + common + "\n" + body + "\n}\n");
    return looks;
}

QByteArray Samples::imports()
{
    return "import QtQuick 2.15\nimport QtQuick.Controls 2.15\nimport QtQuick.Window 2.15\n"
           "import " TAVOLINS_QML_URI " 1.0\n";
}
