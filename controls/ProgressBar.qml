import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.ProgressBar {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones

    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    // A pixel inside the groove, which so tells it from any page.
    contentItem: PaddedRectangle {
        property real phase

        implicitHeight: Look.grooveSize
        padding: 1
        leftPadding: 1 + (control.indeterminate ? phase * 0.7 * (width - 2) : 0)
        rightPadding: 1 + (control.indeterminate ? (1 - phase) * 0.7 : 1 - control.position) * (width - 2)
        radius: Math.min(Look.radius, height / 2)
        color: control.__look.accent.rest
        scale: control.mirrored ? -1 : 1

        // There and back.
        NumberAnimation on phase {
            running: control.indeterminate && control.visible
            from: 0
            to: 1
            duration: 16 * Look.duration
            easing.type: Easing.CosineCurve
            loops: Animation.Infinite
        }
    }

    background: Rectangle {
        y: (control.height - height) / 2
        implicitWidth: Look.touchHeight * 5
        implicitHeight: Look.touchHeight / 4
        height: Look.grooveSize
        radius: Math.min(Look.radius, height / 2)
        color: control.__look.groove
    }
}
