import QtQuick 2.15
import QtQuick.Layouts 1.15
import Tavolins 1.0

Rectangle {
    id: card

    property string title
    default property alias content: column.data

    implicitHeight: column.implicitHeight + 40
    radius: Theme.radius
    color: Theme.colors.lighterBackground
    border.width: 1
    border.color: Theme.colors.darkerBackground

    ColumnLayout {
        id: column

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: 20
        }
        spacing: 12

        Text {
            Layout.fillWidth: true
            text: card.title
            font: card.Theme.fonts.h3Font
            color: card.Theme.colors.foreground
        }
    }
}
