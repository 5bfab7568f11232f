import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0
import "impl"

T.Frame {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat

    padding: 2 * Look.padding

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    background: Rectangle {
        radius: Look.radius
        color: control.__ground.rest
        border.color: control.__ground.outline
    }
}
