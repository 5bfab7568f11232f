import QtQuick 2.15

// The dot is what a wide border leaves free.
Rectangle {
    property Item control

    readonly property QtObject ground: control.checked ? control.__ground.emphasis : control.__ground
    readonly property color fill: control.down ? ground.pressed
                                               : control.hovered ? ground.hovered : ground.rest

    implicitWidth: Math.round(control.font.pixelSize * Look.indicatorScale)
    implicitHeight: implicitWidth
    radius: width / 2
    color: control.checked ? ground.text : fill
    border.width: control.checked ? Math.round(width * 0.3) : 1
    border.color: control.checked ? fill : ground.outline
}
