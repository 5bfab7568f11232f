import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Dial {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).raised

    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    background: Rectangle {
        x: (control.width - width) / 2
        y: (control.height - height) / 2
        implicitWidth: Look.touchHeight * 3.25
        implicitHeight: Look.touchHeight * 3.25
        width: Math.min(control.width, control.height)
        height: width
        radius: width / 2
        color: control.pressed ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.visualFocus ? 3 : 1
        border.color: control.visualFocus ? control.__ground.text
                                          : control.__ground.outline
    }

    handle: Rectangle {
        x: (control.width - width) / 2
        y: (control.height - height) / 2
        width: Math.round(control.background.width / 7)
        height: width
        radius: width / 2
        color: control.__ground.emphasis.rest
        transform: [
            Translate {
                y: -control.background.height * 0.36
            },
            Rotation {
                angle: control.angle
                origin.x: control.handle.width / 2
                origin.y: control.handle.height / 2
            }
        ]
    }
}
