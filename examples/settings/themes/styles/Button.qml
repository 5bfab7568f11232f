import QtQuick 2.15
import Tavolins 1.0

// A rounded button. The variants beside this file only name a class.
Rectangle {
    id: button

    property string text

    signal clicked()

    readonly property bool isHot: area.containsMouse || activeFocus

    implicitWidth: Math.max(110, label.implicitWidth + 36)
    implicitHeight: label.implicitHeight + 22
    radius: Math.min(Theme.radius, height / 2)
    color: area.pressed ? Theme.colors.darkerBackground
                        : area.containsMouse ? Theme.colors.lighterBackground
                                             : Theme.colors.background
    border.width: activeFocus ? 2 : 1
    border.color: activeFocus ? Theme.colors.foreground
                              : Theme.classnames ? color : Theme.colors.lighterForeground
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Text {
        id: label

        anchors.centerIn: parent
        text: button.text
        font: button.Theme.fonts.mainFont
        color: button.Theme.colors.foreground
    }
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }
}
