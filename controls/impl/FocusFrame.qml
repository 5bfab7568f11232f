import QtQuick 2.15

// Shows keyboard focus: a line inside its parent's ground, in the color of the text that stands on
// this ground, so that it is seen wherever the text is.
Rectangle {
    x: 2
    y: 2
    width: parent.width - 4
    height: parent.height - 4
    radius: Math.max(0, parent.radius - 2)
    color: "transparent"
    border.width: 2
}
