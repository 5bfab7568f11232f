import QtQuick 2.15
import QtQuick.Layouts 1.15
import Tavolins 1.0

// A label, and the switch that the theme brings.
RowLayout {
    id: toggle

    property string text
    property bool checked

    signal toggled()

    Text {
        Layout.fillWidth: true
        text: toggle.text
        font: toggle.Theme.fonts.mainFont
        color: toggle.Theme.colors.foreground
        elide: Text.ElideRight
    }
    Loader {
        id: loader

        source: toggle.Theme.colors ? toggle.Theme.getStyle("Toggle") : ""
        onLoaded: {
            item.text = Qt.binding(() => toggle.text)
            item.checked = Qt.binding(() => toggle.checked)
        }
    }
    Connections {
        target: loader.item

        function onToggled() {
            toggle.toggled()
        }
    }
}
