import QtQuick 2.12
import QtQuick.Controls 2.12 as Controls
import Tavolins 1.0

Controls.TextField {
    font: Theme.fonts.mainFont
    implicitWidth: 240
    selectByMouse: true
    // What is selected is still seen when the focus is elsewhere.
    persistentSelection: true
}
