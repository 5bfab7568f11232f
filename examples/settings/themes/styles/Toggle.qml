import QtQuick 2.15
import Tavolins 1.0

Rectangle {
    id: toggle

    property string text
    property bool checked

    signal toggled()

    implicitWidth: 48
    implicitHeight: 26
    radius: Math.min(Theme.radius, height / 2)
    color: checked ? on.Theme.colors.background : Theme.colors.darkerBackground
    border.width: activeFocus ? 2 : 0
    border.color: Theme.colors.foreground
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checked: checked
    Accessible.onToggleAction: toggled()
    Keys.onSpacePressed: toggled()

    QtObject {
        id: on

        Theme.classnames: "primary"
    }
    Rectangle {
        x: toggle.checked ? parent.width - width - 4 : 4
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        radius: Math.max(0, toggle.radius - 4)
        color: toggle.checked ? on.Theme.colors.foreground
                              : toggle.Theme.colors.lighterForeground
    }
    MouseArea {
        anchors.fill: parent
        onClicked: toggle.toggled()
    }
}
