import QtQuick 2.12
import QtQuick.Layouts 1.12
import Tavolins 1.0

RowLayout {
    id: row

    property string name
    property string sample
    readonly property font value: Theme.fonts[name]

    function twoDigits(number) {
        return Math.round(number * 100) / 100
    }

    spacing: 16

    Text {
        Layout.fillWidth: true
        text: row.sample
        font: row.value
        color: Theme.colors.foreground
        elide: Text.ElideRight
    }

    Column {
        Layout.preferredWidth: 160
        Layout.alignment: Qt.AlignVCenter
        spacing: 1

        Caption {
            width: parent.width
            text: row.name
            horizontalAlignment: Text.AlignRight
            font.bold: true
            font.pixelSize: 11
        }

        Caption {
            width: parent.width
            text: row.value.family + " " + row.twoDigits(row.value.pointSize) + " pt"
            horizontalAlignment: Text.AlignRight
            font.pixelSize: 11
        }
    }
}
