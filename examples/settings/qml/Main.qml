import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Window 2.15
import Qt.labs.settings 1.0
import Tavolins 1.0

Window {
    id: main

    readonly property color ink: Theme.colors.foreground
    readonly property color quietInk: Theme.colors.lighterForeground
    readonly property font bodyFont: Theme.fonts.mainFont
    readonly property int margin: 24

    width: 800
    height: 520
    minimumWidth: 720
    minimumHeight: 520
    visible: true
    title: qsTr("Harbour Watch")
    color: Theme.colors.background

    Settings {
        id: settings

        property string theme: "Shore"
        property int limit: 14
        property bool sound: true
        property bool atNight: false
    }

    // The folders are in the application's resources. The choice that is stored stays stored when
    // its theme is gone: it may come back.
    Component.onCompleted: {
        ThemeManager.loadThemes(":/settings/themes")
        ThemeManager.loadThemes(":/settings/themes/lantern", settings.theme)
        if (ThemeManager.currentIndex < 0)
            ThemeManager.current = ThemeManager.data(ThemeManager.index(0, 0), Qt.UserRole + 1)
    }

    function restoreDefaults() {
        settings.limit = 14
        settings.sound = true
        settings.atNight = false
    }

    Rectangle {
        anchors.fill: parent
        color: main.color
    }

    Rectangle {
        id: header

        readonly property color ink: Theme.colors.foreground

        Theme.classnames: "header"
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 84
        color: Theme.colors.background

        Column {
            anchors {
                left: parent.left
                leftMargin: main.margin
                verticalCenter: parent.verticalCenter
            }
            spacing: 2

            Text {
                text: main.title
                font: main.Theme.fonts.h2Font
                color: header.ink
            }
            Text {
                text: qsTr("Settings of this station")
                font: main.bodyFont
                color: header.ink
            }
        }

        Rectangle {
            id: menuButton

            objectName: "menuButton"
            anchors {
                right: parent.right
                rightMargin: main.margin
                verticalCenter: parent.verticalCenter
            }
            width: 44
            height: 44
            radius: Math.min(main.Theme.radius, height / 2)
            color: pointer.containsMouse || menu.visible ? header.Theme.colors.lighterBackground
                                                         : "transparent"
            border.width: activeFocus ? 2 : 0
            border.color: header.ink
            activeFocusOnTab: true
            Accessible.role: Accessible.ButtonMenu
            Accessible.name: qsTr("Menu")
            Keys.onSpacePressed: menu.open()

            Column {
                anchors.centerIn: parent
                spacing: 5

                Repeater {
                    model: 3

                    Rectangle {
                        width: 20
                        height: 2
                        color: header.ink
                    }
                }
            }

            MouseArea {
                id: pointer

                anchors.fill: parent
                hoverEnabled: true
                onClicked: menu.open()
            }

            AppMenu {
                id: menu

                objectName: "menu"
                x: parent.width - width
                y: parent.height + 6

                AppMenuItem {
                    objectName: "monitorMenuItem"
                    text: qsTr("Open the monitor")
                    onTriggered: monitor.show()
                }
                AppMenuItem {
                    objectName: "restoreMenuItem"
                    text: qsTr("Restore the defaults…")
                    onTriggered: dialog.open()
                }
            }
        }
    }

    ColumnLayout {
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
            margins: main.margin
        }
        spacing: 20

        WindBanner {
            id: banner

            objectName: "banner"
            Layout.fillWidth: true
            limit: settings.limit
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 20

            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                title: qsTr("Appearance")

                Text {
                    Layout.fillWidth: true
                    text: qsTr("Theme")
                    font: main.bodyFont
                    color: main.ink
                }
                ThemeChooser {
                    objectName: "chooser"
                    Layout.fillWidth: true
                    onActivated: function(index) {
                        ThemeManager.currentIndex = index
                        settings.theme = currentText
                    }
                }
                Text {
                    Layout.fillWidth: true
                    text: qsTr("It stays chosen at the next start.")
                    font: main.bodyFont
                    color: main.quietInk
                    elide: Text.ElideRight
                }
            }

            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                title: qsTr("Warnings")

                RowLayout {
                    Layout.fillWidth: true

                    Text {
                        Layout.fillWidth: true
                        text: qsTr("From a wind of")
                        font: main.bodyFont
                        color: main.ink
                    }
                    Text {
                        text: qsTr("%1 m/s").arg(settings.limit)
                        font: main.bodyFont
                        color: main.ink
                    }
                }
                LevelSlider {
                    objectName: "limit"
                    Layout.fillWidth: true
                    Accessible.name: qsTr("Warn from this wind")
                    from: 5
                    to: 30
                    value: settings.limit
                    onMoved: settings.limit = value
                }
                StyledToggle {
                    objectName: "sound"
                    Layout.fillWidth: true
                    text: qsTr("With a sound")
                    checked: settings.sound
                    onToggled: settings.sound = !settings.sound
                }
                StyledToggle {
                    objectName: "atNight"
                    Layout.fillWidth: true
                    text: qsTr("Also at night")
                    checked: settings.atNight
                    onToggled: settings.atNight = !settings.atNight
                }
            }
        }

        RowLayout {
            Layout.fillWidth: true
            spacing: 12

            StyledButton {
                objectName: "restoreButton"
                text: qsTr("Restore the defaults…")
                onClicked: dialog.open()
            }
            Item {
                Layout.fillWidth: true
            }
            StyledButton {
                objectName: "monitorButton"
                text: qsTr("Open the monitor")
                kind: "primary"
                onClicked: monitor.show()
            }
        }
    }

    ResetDialog {
        id: dialog

        objectName: "dialog"
        onAccepted: main.restoreDefaults()
    }

    MonitorWindow {
        id: monitor

        objectName: "monitor"
        wind: banner.wind
        limit: settings.limit
    }
}
