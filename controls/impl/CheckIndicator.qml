import QtQuick 2.15
import QtQuick.Controls.impl 2.15

Rectangle {
    id: indicator

    property Item control
    property int checkState: control.checkState

    readonly property QtObject ground: checkState === Qt.Unchecked ? control.__ground
                                                                   : control.__ground.emphasis

    implicitWidth: Math.round(control.font.pixelSize * Look.indicatorScale)
    implicitHeight: implicitWidth
    radius: Math.min(Look.radius, width / 4)
    color: control.down ? ground.pressed : control.hovered ? ground.hovered : ground.rest
    border.width: checkState === Qt.Unchecked ? 1 : 0
    border.color: ground.outline

    ColorImage {
        width: indicator.width
        height: indicator.height
        sourceSize.width: width
        sourceSize.height: height
        color: indicator.ground.text
        source: indicator.checkState === Qt.Checked ? "images/check.png"
                : indicator.checkState === Qt.PartiallyChecked ? "images/dash.png" : ""
    }
}
