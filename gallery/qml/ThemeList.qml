import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: sidebar

    property QtObject currentTheme
    // Nothing happens in a picture, so it has no word on that.
    property bool isPicture: false

    readonly property alias count: list.count

    signal chosen(int index)

    readonly property color ink: Theme.complementaryColor(color)

    color: Theme.colors.darkerBackground

    Rectangle {
        anchors {
            top: parent.top
            bottom: parent.bottom
            right: parent.right
        }
        width: 1
        color: Theme.colors.foreground
        opacity: 0.18
    }

    Caption {
        id: heading

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            margins: 22
            topMargin: 28
        }
        text: "Themes"
        color: sidebar.ink
        font.bold: true
        font.capitalization: Font.AllUppercase
        font.letterSpacing: 1.2
    }

    ListView {
        id: list

        objectName: "themeList"
        anchors {
            left: parent.left
            right: parent.right
            top: heading.bottom
            bottom: footer.top
            margins: 12
        }
        clip: true
        spacing: 4
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        model: ThemeManager
        currentIndex: ThemeManager.currentIndex

        delegate: ThemeRow {
            width: list.width
            title: pointer ? pointer.title : display
            theme: pointer
            number: index + 1
            selected: index === ThemeManager.currentIndex
            hasPrimary: sidebar.currentTheme.classNames.indexOf("primary") >= 0
            onClicked: sidebar.chosen(index)
        }
    }

    Column {
        id: footer

        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            margins: 22
        }
        spacing: 4

        Caption {
            width: parent.width
            text: (sidebar.isPicture ? "" : "Follows ") + sidebar.currentTheme.fileName
            color: sidebar.ink
            elide: Text.ElideMiddle
        }

        Caption {
            width: parent.width
            text: "Its edits show when saved."
            visible: !sidebar.isPicture
            color: sidebar.ink
        }
    }
}
