import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.TabButton {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: checked ? __look.accent : __look.flat

    padding: Look.padding
    horizontalPadding: 2 * padding
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    icon.width: 20
    icon.height: 20
    icon.color: __ground.text

    contentItem: IconLabel {
        spacing: control.spacing
        mirrored: control.mirrored
        display: control.display
        icon: control.icon
        text: control.text
        font: control.font
        color: control.__ground.text
    }

    background: Rectangle {
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, height / 2)
        color: control.down ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.visualFocus ? Look.focusWidth : 0
        border.color: control.__ground.text
    }
}
