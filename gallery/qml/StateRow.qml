import QtQuick 2.12
import QtQuick.Layouts 1.12
import Tavolins 1.0

// One control in each state that it has.
RowLayout {
    id: row

    property string name
    property Component sample
    // Those that have other states than the usual ones leave some out.
    property var states: ["Normal", "Hovered", "Pressed", "Focused", "Disabled", "Checked"]

    spacing: 12

    Caption {
        Layout.preferredWidth: 110
        text: row.name
    }

    Repeater {
        model: ["Normal", "Hovered", "Pressed", "Focused", "Disabled", "Checked"]

        // Has a ground, as the window draws it alone in its pictures.
        Rectangle {
            Layout.preferredWidth: 132
            implicitHeight: loader.height
            color: row.Theme.colors.background

            Loader {
                id: loader

                // What the window looks for, to bring the control into the states of mouse and keyboard.
                readonly property string stateShown: modelData

                width: item ? Math.min(item.implicitWidth, parent.width) : 0
                active: row.states.indexOf(modelData) >= 0
                enabled: modelData !== "Disabled"
                sourceComponent: row.sample
                onLoaded: {
                    item.hoverEnabled = true
                    if (modelData === "Checked")
                        item.checked = true
                    if (modelData === "Pressed" && "down" in item)
                        item.down = true
                }
            }
        }
    }
}
