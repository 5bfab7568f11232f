import QtQuick 2.15
import Tavolins 1.0

// Lantern's button is an outline that fills when it is hot. The variants beside this file only name a class.
Rectangle {
    id: button

    property string text

    signal clicked()

    readonly property bool isHot: area.containsMouse || activeFocus

    implicitWidth: Math.max(110, label.implicitWidth + 36)
    implicitHeight: label.implicitHeight + 22
    radius: 0
    color: area.pressed || isHot ? Theme.colors.foreground : "transparent"
    border.width: 2
    border.color: Theme.colors.foreground
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
        color: button.isHot ? button.Theme.colors.background
                            : button.Theme.colors.foreground
    }
    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }
}
