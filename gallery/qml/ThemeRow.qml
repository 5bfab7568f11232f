import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: row

    property string title
    property QtObject theme
    property int number
    property bool selected
    property bool hasPrimary

    signal clicked()

    readonly property color ink: selected && hasPrimary
                                 ? Theme.colors.foreground
                                 : Theme.complementaryColor(selected || area.containsMouse
                                                            ? color
                                                            : Theme.colors.darkerBackground)
    readonly property color fill: hasPrimary ? Theme.colors.background : Theme.colors.foreground

    Theme.classnames: selected && hasPrimary ? "primary" : ""

    implicitHeight: 48
    radius: Math.min(Theme.radius, height / 2)
    color: selected ? fill : area.containsMouse ? Theme.colors.lighterBackground : "transparent"

    // The theme in small, in its own colors.
    Rectangle {
        id: chip

        anchors {
            left: parent.left
            leftMargin: 10
            verticalCenter: parent.verticalCenter
        }
        width: 40
        height: 28
        radius: row.theme ? Math.min(row.theme.radius, 14) : 0
        color: row.theme ? row.theme.colors.background : "transparent"
        border.width: 1
        border.color: row.theme ? row.theme.colors.foreground : "transparent"

        Text {
            anchors.centerIn: parent
            text: "Aa"
            color: row.theme ? row.theme.colors.foreground : "transparent"
            font.family: row.theme ? row.theme.fonts.h1Font.family : ""
            font.pixelSize: 14
        }
    }

    Text {
        anchors {
            left: chip.right
            right: digit.left
            leftMargin: 12
            rightMargin: 8
            verticalCenter: parent.verticalCenter
        }
        // A file that can't be parsed just now leaves its theme without a title.
        text: row.title || (row.theme ? row.theme.filename.replace(/.*\//, "") : "")
        font.family: row.Theme.fonts.mainFont.family
        font.pixelSize: 15
        font.bold: row.selected
        color: row.ink
        elide: Text.ElideRight
    }

    Text {
        id: digit

        anchors {
            right: parent.right
            rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        visible: row.number <= 9
        text: row.number
        font.family: row.Theme.fonts.mainFont.family
        font.pixelSize: 12
        color: row.ink
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.clicked()
    }
}
