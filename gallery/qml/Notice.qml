import QtQuick 2.12
import Tavolins 1.0

// What is wrong with the file that is being edited. Its colors are its own: the theme's may be
// what is wrong.
Rectangle {
    id: notice

    property QtObject currentTheme

    visible: currentTheme.problem.length > 0
    implicitHeight: visible ? label.implicitHeight + 20 : 0
    color: "#7a1f1f"

    Text {
        id: label

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            margins: 20
        }
        text: notice.currentTheme.fileName + " can't be applied (" + notice.currentTheme.problem
              + "); its last look is kept."
        color: "white"
        font.pixelSize: 14
        wrapMode: Text.WordWrap
    }
}
