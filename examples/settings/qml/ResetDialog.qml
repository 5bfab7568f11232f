import QtQuick 2.15
import QtQuick.Layouts 1.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

T.Dialog {
    id: dialog

    readonly property color ink: Theme.colors.foreground
    readonly property font bodyFont: Theme.fonts.mainFont
    readonly property font titleFont: Theme.fonts.h3Font

    anchors.centerIn: T.Overlay.overlay
    width: 420
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    padding: 24
    modal: true
    focus: true
    title: qsTr("Restore the defaults?")

    T.Overlay.modal: Rectangle {
        color: "#80000000"
    }
    background: Rectangle {
        radius: dialog.Theme.radius
        color: dialog.Theme.colors.lighterBackground
        border.width: 1
        border.color: dialog.Theme.colors.lighterForeground
    }
    contentItem: ColumnLayout {
        spacing: 12

        Text {
            Layout.fillWidth: true
            text: dialog.title
            font: dialog.titleFont
            color: dialog.ink
        }
        Text {
            Layout.fillWidth: true
            text: qsTr("Warnings are set as they came; the theme stays.")
            font: dialog.bodyFont
            color: dialog.ink
            wrapMode: Text.WordWrap
        }
        RowLayout {
            Layout.topMargin: 8
            Layout.alignment: Qt.AlignRight
            spacing: 12

            StyledButton {
                objectName: "cancelButton"
                text: qsTr("Cancel")
                onClicked: dialog.reject()
            }
            StyledButton {
                objectName: "acceptButton"
                text: qsTr("Restore")
                kind: "danger"
                onClicked: dialog.accept()
            }
        }
    }
}
