import QtQuick 2.15

Rectangle {
    property QtObject ground
    property bool pressed
    property bool hovered
    property bool focused

    implicitWidth: Look.handleSize
    implicitHeight: Look.handleSize
    radius: Math.min(Look.radius * 2, width / 2)
    color: pressed ? ground.pressed : hovered ? ground.hovered : ground.rest
    border.width: focused ? 1.5 * Look.focusWidth : 1
    border.color: focused ? ground.text : ground.outline
}
