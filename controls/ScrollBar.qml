import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.ScrollBar {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat
    readonly property bool __shown: policy === T.ScrollBar.AlwaysOn || (active && size < 1)

    padding: 2

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
    visible: policy !== T.ScrollBar.AlwaysOff
    minimumSize: orientation === Qt.Horizontal ? height / width : width / height

    contentItem: Rectangle {
        implicitWidth: control.interactive ? 8 : 4
        implicitHeight: control.interactive ? 8 : 4
        radius: Math.min(Look.radius, width / 2)
        color: control.pressed ? control.__ground.text
               : control.hovered ? control.__ground.placeholder : control.__ground.outline
        opacity: control.__shown ? 1 : 0

        Behavior on opacity {
            enabled: !control.__shown
            NumberAnimation {
                duration: 5 * Look.duration
                easing.type: Easing.InExpo
            }
        }
    }
}
