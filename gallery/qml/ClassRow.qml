import QtQuick 2.12
import Tavolins 1.0

// An item that carries the class, and nothing but the class.
Rectangle {
    id: row

    property string name
    property string origin
    property string extended

    Theme.classnames: name

    implicitHeight: Math.max(38, label.implicitHeight + 12)
    radius: Math.min(Theme.radius, height / 2)
    color: Theme.colors.background
    border.width: 1
    border.color: Qt.rgba(Theme.colors.foreground.r, Theme.colors.foreground.g,
                          Theme.colors.foreground.b, 0.25)

    Text {
        id: label

        anchors {
            left: parent.left
            right: source.left
            verticalCenter: parent.verticalCenter
            leftMargin: 14
            rightMargin: 8
        }
        text: row.name
        font: row.Theme.fonts.mainFont
        color: row.Theme.colors.foreground
        elide: Text.ElideRight
    }

    Caption {
        id: source

        anchors {
            right: parent.right
            rightMargin: 14
            verticalCenter: parent.verticalCenter
        }
        text: row.origin.length > 0 ? "from " + row.origin : row.extended.length > 0 ? "own" : ""
        color: row.Theme.colors.foreground
    }
}
