import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Tavolins 1.0

// All controls in their states.
Pane {
    id: page

    // Pictures show what moves, and what opens at a click, standing still and open.
    property bool isPicture: false

    readonly property var toggle: ["Normal", "Hovered", "Focused", "Disabled", "Checked"]
    readonly property var field: ["Normal", "Hovered", "Focused", "Disabled"]
    readonly property var handled: ["Normal", "Hovered", "Pressed", "Focused", "Disabled"]

    readonly property real wholeHeight: column.implicitHeight + topPadding + bottomPadding

    font: Theme.fonts.mainFont
    padding: 28

    Flickable {
        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: Math.max(width, column.implicitWidth)
        contentHeight: column.implicitHeight
        ScrollBar.vertical: ScrollBar { }
        ScrollBar.horizontal: ScrollBar { }

        ColumnLayout {
            id: column

            objectName: "controls"
            spacing: 8

            RowLayout {
                spacing: 12

                Repeater {
                    model: ["Control", "Normal", "Hovered", "Pressed", "Focused", "Disabled", "Checked"]

                    Caption {
                        Layout.preferredWidth: index === 0 ? 110 : 132
                        text: modelData
                        font.bold: true
                    }
                }
            }

            StateRow { name: "Button"; sample: Component { Button { text: "Button"; checkable: true } } }
            StateRow {
                name: "highlighted"
                states: page.handled
                sample: Component { Button { text: "Button"; highlighted: true } }
            }
            StateRow {
                name: "flat"
                sample: Component { Button { text: "Button"; flat: true; checkable: true } }
            }
            StateRow { name: "RoundButton"; sample: Component { RoundButton { text: "+"; checkable: true } } }
            StateRow { name: "ToolButton"; sample: Component { ToolButton { text: "Tool"; checkable: true } } }
            StateRow { name: "TabButton"; sample: Component { TabButton { text: "Tab"; width: implicitWidth } } }
            StateRow {
                name: "DelayButton"
                sample: Component { DelayButton { text: "Delay"; progress: 0.4 } }
            }
            StateRow { name: "CheckBox"; sample: Component { CheckBox { text: "Check" } } }
            StateRow { name: "RadioButton"; sample: Component { RadioButton { text: "Radio" } } }
            StateRow { name: "Switch"; sample: Component { Switch { text: "Switch" } } }
            StateRow {
                name: "ComboBox"
                states: page.handled
                sample: Component { ComboBox { model: ["First", "Second"] } }
            }
            StateRow {
                name: "TextField"
                states: page.field
                sample: Component { TextField { text: "Some words" } }
            }
            StateRow {
                name: "TextArea"
                states: page.field
                sample: Component { TextArea { placeholderText: "Placeholder" } }
            }
            StateRow { name: "SpinBox"; states: page.field; sample: Component { SpinBox { value: 42 } } }
            StateRow { name: "Slider"; states: page.handled; sample: Component { Slider { value: 0.4 } } }
            StateRow {
                name: "RangeSlider"
                states: ["Normal", "Disabled"]
                sample: Component { RangeSlider { first.value: 0.2; second.value: 0.7 } }
            }
            StateRow { name: "Dial"; states: page.field; sample: Component { Dial { value: 0.3 } } }
            StateRow {
                name: "Tumbler"
                states: ["Normal", "Focused", "Disabled"]
                sample: Component { Tumbler { model: 9; currentIndex: 3; visibleItemCount: 3 } }
            }
            StateRow {
                name: "ItemDelegate"
                sample: Component { ItemDelegate { text: "Item"; highlighted: checked } }
            }
            StateRow { name: "CheckDelegate"; sample: Component { CheckDelegate { text: "Check" } } }
            StateRow { name: "RadioDelegate"; sample: Component { RadioDelegate { text: "Radio" } } }
            StateRow { name: "SwitchDelegate"; sample: Component { SwitchDelegate { text: "On" } } }
            StateRow {
                name: "SwipeDelegate"
                states: page.handled
                sample: Component { SwipeDelegate { text: "Swipe" } }
            }
            StateRow { name: "MenuItem"; sample: Component { MenuItem { text: "Item"; checkable: true } } }
            StateRow {
                name: "MenuBarItem"
                states: page.handled
                sample: Component { MenuBarItem { text: "File" } }
            }

            RowLayout {
                Layout.topMargin: 16
                spacing: 24

                ColumnLayout {
                    Layout.alignment: Qt.AlignTop
                    spacing: 12

                    ProgressBar { value: 0.4 }
                    ProgressBar { indeterminate: !page.isPicture; value: 0.7 }
                    RowLayout {
                        spacing: 24

                        BusyIndicator {
                            id: busy

                            running: !page.isPicture

                            Binding {
                                target: busy.contentItem
                                property: "visible"
                                value: true
                            }
                        }
                        PageIndicator { count: 4; currentIndex: 1 }
                    }
                    Slider {
                        orientation: Qt.Vertical
                        value: 0.4
                        Layout.preferredHeight: 90
                    }
                }

                GroupBox {
                    Layout.alignment: Qt.AlignTop
                    title: "GroupBox"

                    ColumnLayout {
                        Label { text: "Label" }
                        Label { text: "disabled"; enabled: false }
                        Label { text: "muted"; Theme.classnames: "muted" }
                        Label { text: "<a href='#'>link</a>" }
                    }
                }

                Frame {
                    Layout.alignment: Qt.AlignTop

                    ColumnLayout {
                        Button { text: "primary"; Theme.classnames: "primary" }
                        Button { text: "danger"; Theme.classnames: "danger" }
                        CheckBox { text: "danger"; checked: true; Theme.classnames: "danger" }
                        Slider {
                            Layout.preferredWidth: 110
                            value: 0.4
                            Theme.classnames: "danger"
                        }
                    }
                }

                Page {
                    Layout.alignment: Qt.AlignTop
                    Layout.preferredWidth: 360
                    Layout.preferredHeight: implicitHeaderHeight + implicitFooterHeight
                                            + scrolled.topPadding + 3 * lines.implicitHeight / lines.lineCount
                    header: ColumnLayout {
                        spacing: 0

                        MenuBar {
                            Layout.fillWidth: true

                            Menu { title: "File"; Action { text: "Open" } Action { text: "Save" } }
                            Menu { title: "Edit"; Action { text: "Undo" } }
                        }
                        ToolBar {
                            Layout.fillWidth: true

                            RowLayout {
                                ToolButton { text: "Back" }
                                ToolSeparator { }
                                ToolButton { text: "Bold"; checkable: true; checked: true }
                            }
                        }
                    }
                    footer: TabBar {
                        currentIndex: pages.currentIndex

                        TabButton { text: "One" }
                        TabButton { text: "Two" }
                    }

                    SwipeView {
                        id: pages

                        anchors.fill: parent
                        clip: true

                        SplitView {
                            Pane { SplitView.preferredWidth: 90; Label { text: "Split" } }
                            ScrollView {
                                id: scrolled

                                ScrollBar.vertical.policy: ScrollBar.AlwaysOn
                                padding: 10
                                bottomPadding: 0

                                Label {
                                    id: lines

                                    text: "a\nview\nto\nbe\nscrolled\nfar\ndown"
                                }
                            }
                        }
                        StackView { initialItem: Pane { Label { text: "Stack" } } }
                    }
                }
            }

            RowLayout {
                Layout.topMargin: 16
                spacing: 12
                visible: !page.isPicture

                Button { text: "Dialog"; onClicked: dialog.open() }
                Button { text: "Modal dialog"; onClicked: modalDialog.open() }
                Button { text: "Menu"; onClicked: menu.open() }
                Button { text: "Popup"; onClicked: popup.open() }
                Button { text: "Drawer"; onClicked: drawer.open() }
                Button { id: hinted; text: "Tool tip"; hoverEnabled: true }
            }

            Item {
                id: stage

                Layout.topMargin: 16
                Layout.fillWidth: true
                implicitHeight: 230

                Dialog {
                    id: dialog

                    y: 0
                    title: "Save the changes?"
                    standardButtons: Dialog.Save | Dialog.Cancel
                    visible: page.isPicture

                    Label { text: "There are unsaved changes." }
                }
                Menu {
                    id: menu

                    x: 330
                    visible: page.isPicture

                    MenuItem { text: "Open" }
                    MenuItem { text: "Follow"; checkable: true; checked: true }
                    MenuSeparator { }
                    Menu { title: "Recent"; MenuItem { text: "harbour.thm" } }
                }
                Popup {
                    id: popup

                    x: 540
                    visible: page.isPicture

                    Label { text: "A popup" }
                }
                ToolTip {
                    parent: page.isPicture ? stage : hinted
                    x: page.isPicture ? 680 : 0
                    y: page.isPicture ? 0 : -height - 6
                    text: "A tool tip"
                    visible: page.isPicture || hinted.hovered
                }

                TableView {
                    id: table

                    x: 560
                    y: 120
                    width: 200
                    height: 60
                    // No array: with the headers of one Qt 6.4 crashes, in every style.
                    model: 3
                    delegate: ItemDelegate {
                        text: ["first", "second", "third"][index]
                        implicitWidth: 100
                    }
                }
                HorizontalHeaderView {
                    x: table.x
                    y: table.y - height
                    syncView: table
                    model: ["Header"]
                }
                VerticalHeaderView {
                    x: table.x - width
                    y: table.y
                    syncView: table
                    model: [1, 2, 3]
                }
            }
        }
    }

    Dialog {
        id: modalDialog

        anchors.centerIn: Overlay.overlay
        modal: true
        title: "Modal"
        standardButtons: Dialog.Ok

        Label { text: "What is below is dimmed." }
    }

    Drawer {
        id: drawer

        width: 220
        height: parent.height

        Label { anchors.centerIn: parent; text: "A drawer" }
    }
}
