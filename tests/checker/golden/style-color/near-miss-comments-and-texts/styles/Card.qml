import QtQuick 2.12

// as "#1d2b36"
Rectangle {
    /* color: "red" */
    property string text: "red"
    property string number: "#1"
    color: "transparent"
}
