import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.RangeSlider {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones

    padding: Look.padding
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            first.implicitHandleWidth + leftPadding + rightPadding,
                            second.implicitHandleWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             first.implicitHandleHeight + topPadding + bottomPadding,
                             second.implicitHandleHeight + topPadding + bottomPadding)

    first.handle: SliderHandle {
        x: control.leftPadding + (control.availableWidth - width)
           * (control.horizontal ? control.first.visualPosition : 0.5)
        y: control.topPadding + (control.availableHeight - height)
           * (control.horizontal ? 0.5 : control.first.visualPosition)
        ground: control.__look.raised
        pressed: control.first.pressed
        hovered: control.first.hovered
        focused: activeFocus
    }

    second.handle: SliderHandle {
        x: control.leftPadding + (control.availableWidth - width)
           * (control.horizontal ? control.second.visualPosition : 0.5)
        y: control.topPadding + (control.availableHeight - height)
           * (control.horizontal ? 0.5 : control.second.visualPosition)
        ground: control.__look.raised
        pressed: control.second.pressed
        hovered: control.second.hovered
        focused: activeFocus
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
            x: control.horizontal ? 1 + control.first.position * (parent.width - 2) : 1
            y: control.horizontal ? 1 : 1 + control.second.visualPosition * (parent.height - 2)
            width: control.horizontal
                   ? (control.second.position - control.first.position) * (parent.width - 2)
                   : parent.width - 2
            height: control.horizontal
                    ? parent.height - 2
                    : (control.second.position - control.first.position) * (parent.height - 2)
            radius: parent.radius - 1
            color: control.__look.accent.rest
        }
    }
}
