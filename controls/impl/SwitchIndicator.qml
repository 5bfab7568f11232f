import QtQuick 2.15

Rectangle {
    id: indicator

    property Item control

    readonly property QtObject ground: control.checked ? control.__ground.emphasis : control.__ground

    implicitWidth: implicitHeight * 2
    implicitHeight: Math.round(control.font.pixelSize * Look.indicatorScale)
    radius: Math.min(Look.radius * 2, height / 2)
    color: control.down ? ground.pressed : control.hovered ? ground.hovered : ground.rest
    border.width: control.checked ? 0 : 1
    border.color: ground.outline

    Rectangle {
        // Not "x" itself, which moves with the font as well.
        property real position: indicator.control.visualPosition

        x: 3 + position * (parent.width - width - 6)
        y: 3
        width: height
        height: parent.height - 6
        radius: Math.max(0, parent.radius - 3)
        color: indicator.ground.text

        Behavior on position {
            enabled: !indicator.control.down
            NumberAnimation {
                duration: Look.duration
            }
        }
    }
}
