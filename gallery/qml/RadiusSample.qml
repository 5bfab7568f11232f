import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: sample

    implicitWidth: 150
    implicitHeight: 130
    radius: Theme.radius
    color: Theme.colors.lighterBackground
    border.width: 2
    border.color: Theme.colors.foreground

    Column {
        anchors.centerIn: parent

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: sample.Theme.radius
            font.family: sample.Theme.fonts.h1Font.family
            font.pixelSize: 28
            color: sample.Theme.colors.foreground
        }

        Caption {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "pixels"
        }
    }
}
