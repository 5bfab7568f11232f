import QtQuick 2.12
import QtQuick.Layouts 1.12
import Tavolins 1.0

ColumnLayout {
    id: panel

    property string title
    default property alias content: body.data

    spacing: 10

    RowLayout {
        Layout.fillWidth: true
        spacing: 10

        Caption {
            text: panel.title
            font.bold: true
            font.capitalization: Font.AllUppercase
            font.letterSpacing: 1.2
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Theme.colors.foreground
            opacity: 0.18
        }
    }

    ColumnLayout {
        id: body

        Layout.fillWidth: true
        Layout.fillHeight: true
        spacing: 6
    }
}
