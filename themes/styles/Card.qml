import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: card

    property string title
    property string text

    readonly property int padding: 16

    implicitWidth: 280
    implicitHeight: column.implicitHeight + 2 * padding
    radius: Theme.radius
    color: Theme.colors.lighterBackground
    border.width: 1
    border.color: Theme.colors.darkerBackground

    Column {
        id: column

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: card.padding
        }
        spacing: 6

        Text {
            width: parent.width
            text: card.title
            color: card.Theme.colors.foreground
            font: card.Theme.fonts.h3Font
            elide: Text.ElideRight
        }

        Text {
            Theme.classnames: "muted"
            width: parent.width
            text: card.text
            color: Theme.colors.foreground
            font: card.Theme.fonts.mainFont
            wrapMode: Text.WordWrap
        }
    }
}
