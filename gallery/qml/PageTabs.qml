import QtQuick 2.15
import QtQuick.Controls 2.15
import Tavolins 1.0

TabBar {
    font: Theme.fonts.mainFont

    TabButton {
        text: "Theme"
        width: implicitWidth
    }
    TabButton {
        text: "Controls"
        width: implicitWidth
    }
}
