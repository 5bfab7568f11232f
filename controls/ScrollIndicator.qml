import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.ScrollIndicator {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat

    padding: 2

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    contentItem: Rectangle {
        implicitWidth: 4
        implicitHeight: 4
        radius: Math.min(Look.radius, width / 2)
        color: control.__ground.outline
        visible: control.size < 1
        opacity: control.active ? 1 : 0

        Behavior on opacity {
            enabled: !control.active
            NumberAnimation {
                duration: 5 * Look.duration
                easing.type: Easing.InExpo
            }
        }
    }
}
