import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: field

    property alias text: input.text
    property string placeholder

    signal accepted()

    function selectWord(position) {
        input.cursorPosition = position
        input.selectWord()
    }

    implicitWidth: 240
    implicitHeight: input.implicitHeight + 20
    radius: Math.min(Theme.radius, height / 2)
    color: Theme.colors.lighterBackground
    border.width: input.activeFocus ? 2 : 1
    border.color: input.activeFocus ? Theme.colors.foreground : hint.Theme.colors.foreground

    TextInput {
        id: input

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            margins: 12
        }
        clip: true
        activeFocusOnTab: true
        selectByMouse: true
        persistentSelection: true
        color: field.Theme.colors.foreground
        selectionColor: field.Theme.colors.foreground
        selectedTextColor: field.Theme.colors.selection
        font: field.Theme.fonts.mainFont
        onAccepted: field.accepted()
    }

    Text {
        id: hint

        Theme.classnames: "muted"
        anchors.fill: input
        verticalAlignment: Text.AlignVCenter
        visible: input.text.length === 0
        text: field.placeholder
        color: Theme.colors.foreground
        font: input.font
        elide: Text.ElideRight
    }
}
