import QtQuick 2.12

Rectangle {
    color: "#1d2b36"
    border.color: "red"
    property color veil: Qt.rgba(0, 0, 0, 0.5)
}
