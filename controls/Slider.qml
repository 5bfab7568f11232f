import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Slider {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones

    padding: Look.padding
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitHandleWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitHandleHeight + topPadding + bottomPadding)

    handle: SliderHandle {
        x: control.leftPadding + (control.availableWidth - width)
           * (control.horizontal ? control.visualPosition : 0.5)
        y: control.topPadding + (control.availableHeight - height)
           * (control.horizontal ? 0.5 : control.visualPosition)
        ground: control.__look.raised
        pressed: control.pressed
        hovered: control.hovered
        focused: control.visualFocus
    }

    background: Rectangle {
        x: control.horizontal ? control.leftPadding
                              : control.leftPadding + (control.availableWidth - width) / 2
        y: control.horizontal ? control.topPadding + (control.availableHeight - height) / 2
                              : control.topPadding
        implicitWidth: control.horizontal ? Look.touchHeight * 5 : Look.grooveSize
        implicitHeight: control.horizontal ? Look.grooveSize : Look.touchHeight * 5
        width: control.horizontal ? control.availableWidth : implicitWidth
        height: control.horizontal ? implicitHeight : control.availableHeight
        radius: Math.min(Look.radius, Look.grooveSize / 2)
        color: control.__look.groove
        scale: control.horizontal && control.mirrored ? -1 : 1

        // A pixel inside the groove, which so tells it from any page.
        Rectangle {
            x: 1
            y: control.horizontal ? 1 : 1 + control.visualPosition * (parent.height - 2)
            width: control.horizontal ? control.position * (parent.width - 2) : parent.width - 2
            height: control.horizontal ? parent.height - 2 : control.position * (parent.height - 2)
            radius: parent.radius - 1
            color: control.__look.accent.rest
        }
    }
}
