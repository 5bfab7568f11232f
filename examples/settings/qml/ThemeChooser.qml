import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

T.ComboBox {
    id: chooser

    readonly property color ink: Theme.colors.foreground
    readonly property color surface: Theme.colors.background
    readonly property color line: Theme.colors.lighterForeground
    readonly property font bodyFont: Theme.fonts.mainFont
    readonly property real corner: Math.min(Theme.radius, height / 2)

    implicitWidth: 200
    implicitHeight: 42
    leftPadding: 14
    rightPadding: 36
    model: ThemeManager
    textRole: "display"
    currentIndex: ThemeManager.currentIndex
    Accessible.name: qsTr("Theme")

    contentItem: Text {
        text: chooser.displayText
        font: chooser.bodyFont
        color: chooser.ink
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: chooser.corner
        color: chooser.surface
        border.width: chooser.visualFocus || chooser.popup.visible ? 2 : 1
        border.color: chooser.visualFocus || chooser.popup.visible ? chooser.ink : chooser.line
    }
    indicator: Item {
        x: chooser.width - width - 14
        y: (chooser.height - height) / 2
        width: 12
        height: 8

        // An arrow head of two strokes.
        Rectangle {
            x: 0
            y: 3
            width: 8
            height: 2
            rotation: 45
            color: chooser.ink
        }
        Rectangle {
            x: 5
            y: 3
            width: 8
            height: 2
            rotation: -45
            color: chooser.ink
        }
    }
    delegate: T.ItemDelegate {
        id: row

        // A control has a property "display" of its own.
        readonly property QtObject theme: model.pointer

        width: ListView.view.width
        implicitHeight: 40
        leftPadding: 14
        highlighted: chooser.highlightedIndex === index
        text: model.display

        contentItem: Text {
            leftPadding: 32
            text: row.text
            font: chooser.bodyFont
            color: chooser.ink
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight

            Rectangle {
                y: (parent.height - height) / 2
                width: 20
                height: 20
                radius: 10
                color: row.theme ? row.theme.colors.background : "transparent"
                border.width: 5
                border.color: row.theme ? row.theme.colors.selection : "transparent"
            }
        }
        background: Rectangle {
            radius: chooser.corner
            color: row.highlighted ? chooser.Theme.colors.darkerBackground : "transparent"
        }
    }
    popup: T.Popup {
        y: chooser.height + 4
        width: chooser.width
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        padding: 4

        contentItem: ListView {
            implicitHeight: contentHeight
            clip: true
            model: chooser.delegateModel
            currentIndex: chooser.highlightedIndex
            highlightMoveDuration: 0
        }
        background: Rectangle {
            radius: chooser.corner
            color: chooser.surface
            border.width: 1
            border.color: chooser.line
        }
    }
}
