import QtQuick 2.15
import Tavolins 1.0

Rectangle {
    id: toggle

    property string text
    property bool checked

    signal toggled()

    implicitWidth: 52
    implicitHeight: 26
    radius: 0
    color: "transparent"
    border.width: activeFocus ? 3 : 2
    border.color: Theme.colors.foreground
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked
    Accessible.onToggleAction: toggled()
    Keys.onSpacePressed: toggled()

    Rectangle {
        x: toggle.checked ? parent.width - width - 5 : 5
        anchors.verticalCenter: parent.verticalCenter
        width: 16
        height: 16
        color: toggle.checked ? toggle.Theme.colors.foreground : "transparent"
        border.width: 2
        border.color: toggle.Theme.colors.foreground
    }
    MouseArea {
        anchors.fill: parent
        onClicked: toggle.toggled()
    }
}
