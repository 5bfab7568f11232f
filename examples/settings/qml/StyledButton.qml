import QtQuick 2.15
import Tavolins 1.0

// The button that the theme brings, for the rest of the application to use like any other.
Loader {
    id: button

    property string text
    /// The class whose variant of the button is wanted; empty for the plain one.
    property string kind

    signal clicked()

    // Reads the colors so that another theme's button replaces this one.
    source: Theme.colors ? Theme.getStyle("Button", kind) : ""
    onLoaded: item.text = Qt.binding(() => button.text)

    Connections {
        target: button.item

        function onClicked() {
            button.clicked()
        }
    }
}
