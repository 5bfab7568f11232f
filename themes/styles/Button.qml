import QtQuick 2.12
import Tavolins 1.0

// The variants beside this file only add a class name, which changes all that is read here.
Rectangle {
    id: button

    property string text
    property color outline: quiet.Theme.colors.foreground

    signal clicked()

    readonly property QtObject quiet: QtObject {
        Theme.classnames: "muted"
    }

    implicitWidth: Math.max(96, label.implicitWidth + 36)
    implicitHeight: label.implicitHeight + 20
    radius: Math.min(Theme.radius, height / 2)
    color: area.pressed ? Theme.colors.darkerBackground
                        : area.containsMouse ? Theme.colors.lighterBackground
                                             : Theme.colors.background
    border.width: activeFocus ? 3 : 1
    border.color: activeFocus ? Theme.colors.foreground : outline
    activeFocusOnTab: true

    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    Text {
        id: label

        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 16)
        text: button.text
        color: button.Theme.colors.foreground
        font: button.Theme.fonts.mainFont
        elide: Text.ElideRight
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.clicked()
    }
}
