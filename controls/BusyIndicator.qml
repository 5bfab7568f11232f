import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.BusyIndicator {
    id: control

    padding: Look.padding

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    // A dot that runs around the middle.
    contentItem: PaddedRectangle {
        implicitWidth: Look.touchHeight
        implicitHeight: Look.touchHeight
        leftPadding: (width - height * 0.3) / 2
        rightPadding: leftPadding
        bottomPadding: height * 0.7
        radius: Look.radius > 0 ? height / 2 : 0
        color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look.tones).accent.rest
        visible: control.running

        RotationAnimator on rotation {
            running: control.running && control.visible
            from: 0
            to: 360
            duration: 8 * Look.duration
            easing.type: Easing.InOutSine
            loops: Animation.Infinite
        }
    }
}
