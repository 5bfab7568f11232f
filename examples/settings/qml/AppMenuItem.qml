import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

T.MenuItem {
    id: item

    readonly property color ink: Theme.colors.foreground
    readonly property font bodyFont: Theme.fonts.mainFont

    implicitWidth: 238
    implicitHeight: 40
    leftPadding: 12

    contentItem: Text {
        text: item.text
        font: item.bodyFont
        color: item.ink
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: Math.min(item.Theme.radius, 8)
        color: item.highlighted ? item.Theme.colors.darkerBackground : "transparent"
    }
}
