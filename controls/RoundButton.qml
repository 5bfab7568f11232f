import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.RoundButton {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: highlighted || checked ? __look.accent
                                         : flat ? __look.flat : __look.raised

    padding: Look.padding
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    // A circle around what is not wider than high. Paddings that follow it would lay all out again.
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding
                            + (implicitContentWidth > implicitContentHeight ? 2 * padding : 0),
                            implicitHeight)
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
        implicitWidth: Look.touchHeight
        implicitHeight: Look.touchHeight
        radius: control.radius
        color: control.down ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.highlighted || control.checked || control.flat ? 0 : 1
        border.color: control.__ground.outline

        FocusFrame {
            visible: control.visualFocus
            border.color: control.__ground.text
        }
    }
}
