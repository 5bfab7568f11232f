import QtQuick 2.15
import QtQuick.Layouts 1.15
import Tavolins 1.0

// The wind as it is now. What it means is the banner's class, and the class gives it its colors.
Rectangle {
    id: banner

    property int limit
    property alias wind: slider.value

    readonly property string level: wind >= limit ? "storm" : wind >= limit - 4 ? "breeze" : "calm"
    readonly property color ink: Theme.colors.foreground
    readonly property font bodyFont: Theme.fonts.mainFont
    readonly property var sentences: ({
        "calm": qsTr("Calm. No warning is due."),
        "breeze": qsTr("Freshening. A warning may follow."),
        "storm": qsTr("Storm. Boats are being warned.")
    })

    Theme.classnames: level
    implicitHeight: row.implicitHeight + 40
    radius: Theme.radius
    color: Theme.colors.background
    border.width: 1
    border.color: Theme.colors.darkerBackground

    RowLayout {
        id: row

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            margins: 20
        }
        spacing: 24

        Text {
            Layout.preferredWidth: 130
            text: qsTr("%1 m/s").arg(banner.wind)
            font: banner.Theme.fonts.h1Font
            color: banner.ink
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 8

            Text {
                objectName: "sentence"
                Layout.fillWidth: true
                text: banner.sentences[banner.level]
                font: banner.bodyFont
                color: banner.ink
                elide: Text.ElideRight
            }
            LevelSlider {
                id: slider

                objectName: "wind"
                Layout.fillWidth: true
                Accessible.name: qsTr("Wind, to try the warnings")
                classnames: banner.level
                from: 0
                to: 35
                value: 8
            }
        }
    }
}
