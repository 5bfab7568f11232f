import QtQuick 2.15
import QtQuick.Controls 2.15
import Tavolins 1.0
ApplicationWindow {
    width: 380; height: 250; visible: true; Component.onCompleted: ThemeManager.loadThemes("themes", "Daylight")
    Column { x: 24; y: 16; spacing: 8; TextField { id: boat; width: 220; placeholderText: "Name of the boat" }
        SpinBox { value: 3 } CheckBox { text: "Needs power"; checked: true } Slider { value: 0.6; width: 220 }
        Button { text: "Book"; highlighted: true; onClicked: dialog.open() } }
    Dialog { id: dialog; anchors.centerIn: Overlay.overlay; modal: true; title: "Book a berth?"; standardButtons: Dialog.Ok | Dialog.Cancel; Label { text: "From Friday to Sunday." } }
}
