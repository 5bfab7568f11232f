import QtQuick 2.15
import QtQuick.Window 2.15
import Tavolins 1.0

// What hangs on the wall: the wind, to be read from afar.
Window {
    id: monitor

    property int wind
    property int limit

    readonly property bool warns: wind >= limit
    readonly property color ink: surface.Theme.colors.foreground

    width: 360
    height: 260
    title: qsTr("Harbour Watch, monitor")
    color: surface.color

    Rectangle {
        id: surface

        Theme.classnames: monitor.warns ? "storm" : ""
        anchors.fill: parent
        color: Theme.colors.background

        Column {
            anchors.centerIn: parent
            spacing: 4

            Text {
                objectName: "reading"
                anchors.horizontalCenter: parent.horizontalCenter
                text: monitor.wind
                font.family: monitor.Theme.fonts.h1Font.family
                font.pixelSize: 96
                color: monitor.ink
            }
            Text {
                anchors.horizontalCenter: parent.horizontalCenter
                text: monitor.warns ? qsTr("m/s, storm") : qsTr("m/s")
                font: monitor.Theme.fonts.h3Font
                color: monitor.ink
            }
        }
    }
}
