import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

T.Menu {
    id: menu

    readonly property color surface: Theme.colors.lighterBackground
    readonly property color line: Theme.colors.lighterForeground
    readonly property real corner: Math.min(Theme.radius, 12)

    implicitWidth: 250
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: 6

    contentItem: ListView {
        implicitHeight: contentHeight
        interactive: false
        model: menu.contentModel
        currentIndex: menu.currentIndex
    }
    background: Rectangle {
        radius: menu.corner
        color: menu.surface
        border.width: 1
        border.color: menu.line
    }
}
