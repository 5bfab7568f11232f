import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: swatch

    property string name
    readonly property color value: Theme.colors[name]
    readonly property color ink: Theme.complementaryColor(value)

    implicitHeight: 76
    radius: Math.min(Theme.radius, 16)
    color: value
    border.width: 1
    border.color: Qt.rgba(ink.r, ink.g, ink.b, 0.2)

    Column {
        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            margins: 8
        }
        spacing: 2

        Caption {
            width: parent.width
            text: swatch.name
            color: swatch.ink
            font.bold: true
            font.pixelSize: 11
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 8
        }

        Caption {
            width: parent.width
            text: swatch.value.toString()
            color: swatch.ink
            font.pixelSize: 11
        }
    }
}
