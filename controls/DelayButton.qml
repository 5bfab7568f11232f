import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.DelayButton {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: checked ? __look.accent : __look.raised

    padding: Look.padding
    horizontalPadding: 2 * padding
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    transition: Transition {
        NumberAnimation {
            duration: control.delay * (control.pressed ? 1 - control.progress : control.progress / 3)
        }
    }

    contentItem: Text {
        text: control.text
        font: control.font
        color: control.__ground.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }

    background: Rectangle {
        implicitWidth: Look.touchHeight * 2
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, height / 2)
        color: control.down ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.checked ? 0 : 1
        border.color: control.__ground.outline

        // Below the text, which would not be readable on both halves.
        Rectangle {
            x: control.mirrored ? parent.width - width - Look.padding : Look.padding
            y: parent.height - height
            width: control.progress * (parent.width - 2 * Look.padding)
            height: Look.grooveSize / 2
            visible: !control.checked
            color: control.__ground.emphasis.rest
        }

        FocusFrame {
            visible: control.visualFocus
            border.color: control.__ground.text
        }
    }
}
