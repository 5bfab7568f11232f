import QtQuick 2.12
import QtQuick.Layouts 1.12
import Tavolins 1.0

Rectangle {
    id: gallery

    property QtObject currentTheme
    property bool hasControls: false
    property bool showsControls: false
    property bool isPicture: false
    // Of the controls alone, with popups opened that would take keys in a window.
    property bool isControlsPicture: false

    readonly property Item controls: controlsLoader.item
    readonly property bool isWide: content.width >= 900

    function choose(index) {
        if (index >= 0 && index < list.count)
            ThemeManager.currentIndex = index
    }

    color: Theme.colors.background
    focus: true

    Keys.onUpPressed: choose(ThemeManager.currentIndex - 1)
    Keys.onDownPressed: choose(ThemeManager.currentIndex + 1)
    Keys.onPressed: function(event) {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
            showsControls = hasControls && event.key === Qt.Key_PageDown
            event.accepted = true
        }
        if (event.key >= Qt.Key_1 && event.key <= Qt.Key_9) {
            choose(event.key - Qt.Key_1)
            event.accepted = true
        }
    }

    ThemeList {
        id: list

        anchors {
            left: parent.left
            top: parent.top
            bottom: parent.bottom
        }
        width: 232
        currentTheme: gallery.currentTheme
        isPicture: gallery.isPicture
        onChosen: function(index) {
            gallery.forceActiveFocus()
            gallery.choose(index)
        }
    }

    Notice {
        id: notice

        anchors {
            left: list.right
            right: parent.right
            top: parent.top
        }
        currentTheme: gallery.currentTheme
    }

    Loader {
        id: pages

        x: list.width + 28
        y: notice.y + notice.height + (active ? 16 : 0)
        height: active ? implicitHeight : 0
        active: gallery.hasControls
        source: "PageTabs.qml"
    }

    Binding {
        target: pages.item
        property: "currentIndex"
        value: gallery.showsControls ? 1 : 0
        when: pages.item
    }

    Connections {
        target: pages.item

        function onCurrentIndexChanged() {
            gallery.showsControls = pages.item.currentIndex === 1
        }
    }

    Loader {
        id: controlsLoader

        anchors.fill: page
        // Once made it stays, as it was left.
        active: gallery.showsControls || item
        visible: gallery.showsControls
        source: "Controls.qml"
    }

    Binding {
        target: controlsLoader.item
        property: "isPicture"
        value: gallery.isControlsPicture
        when: controlsLoader.item
    }

    Flickable {
        id: page

        visible: !gallery.showsControls

        anchors {
            left: list.right
            right: parent.right
            top: pages.bottom
            bottom: parent.bottom
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentHeight: content.height + 56

        ColumnLayout {
            id: content

            x: 28
            y: 28
            width: page.width - 56
            spacing: 22

            Header {
                Layout.fillWidth: true
                currentTheme: gallery.currentTheme
            }

            Panel {
                Layout.fillWidth: true
                title: "Colors"

                GridLayout {
                    Layout.fillWidth: true
                    columns: gallery.isWide ? 7 : 3
                    columnSpacing: 6
                    rowSpacing: 6

                    Repeater {
                        model: ["foreground", "lighterForeground", "darkerForeground",
                                "background", "lighterBackground", "darkerBackground", "selection"]

                        ColorSwatch {
                            Layout.fillWidth: true
                            Layout.preferredWidth: 1
                            // Alone in its row otherwise.
                            Layout.columnSpan: modelData === "selection" && !gallery.isWide ? 3 : 1
                            name: modelData
                        }
                    }
                }
            }

            GridLayout {
                Layout.fillWidth: true
                columns: gallery.isWide ? 3 : 2
                columnSpacing: 28
                rowSpacing: 22

                Panel {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 5
                    Layout.columnSpan: gallery.isWide ? 1 : 2
                    Layout.alignment: Qt.AlignTop
                    title: "Fonts"

                    Repeater {
                        model: [
                            { "name": "h1Font", "sample": "First heading" },
                            { "name": "h2Font", "sample": "Second heading" },
                            { "name": "h3Font", "sample": "Third heading" },
                            { "name": "h4Font", "sample": "Fourth heading" },
                            { "name": "mainFont", "sample": "Main text, to be read at length" },
                            { "name": "alternateFont", "sample": "Alternate text, to stand out" }
                        ]

                        FontRow {
                            Layout.fillWidth: true
                            name: modelData.name
                            sample: modelData.sample
                        }
                    }
                }

                Panel {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 3
                    Layout.alignment: Qt.AlignTop
                    title: "Classes"

                    Repeater {
                        model: gallery.currentTheme.classNames

                        ClassRow {
                            Layout.fillWidth: true
                            name: modelData
                            origin: gallery.currentTheme.classOrigins[index] || ""
                            extended: gallery.currentTheme.extends
                        }
                    }

                    Caption {
                        visible: gallery.currentTheme.classNames.length === 0
                        text: "This theme has no classes."
                    }
                }

                Panel {
                    Layout.fillWidth: false
                    Layout.alignment: Qt.AlignTop
                    title: "Radius"

                    RadiusSample {}
                }
            }

            Panel {
                Layout.fillWidth: true
                title: "Styles"

                Flow {
                    id: flow

                    Layout.fillWidth: true
                    spacing: 24

                    Repeater {
                        model: gallery.currentTheme.styles

                        StyleSample {
                            style: modelData.style
                            classname: modelData.classname
                            availableWidth: flow.width
                        }
                    }
                }

                Caption {
                    visible: gallery.currentTheme.styles.length === 0
                    text: "This theme brings no styles."
                }
            }
        }
    }
}
