import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0
import "impl"

T.ToolBar {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).raised

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    background: Rectangle {
        implicitHeight: Look.touchHeight
        color: control.__ground.rest
    }
}
