import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Tumbler {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat

    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    delegate: Text {
        text: modelData
        font: control.font
        color: control.__ground.text
        opacity: 1 - Math.abs(T.Tumbler.displacement) / (control.visibleItemCount / 2)
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }

    contentItem: TumblerView {
        readonly property real delegateHeight: control.availableHeight / control.visibleItemCount

        implicitWidth: Look.touchHeight * 2
        implicitHeight: control.visibleItemCount
                        * Math.max(Look.touchHeight * 1.25, control.font.pixelSize * 2.4)
        model: control.model
        delegate: control.delegate
        path: Path {
            startX: control.contentItem.width / 2
            startY: -control.contentItem.delegateHeight / 2

            PathLine {
                x: control.contentItem.width / 2
                y: (control.visibleItemCount + 0.5) * control.contentItem.delegateHeight
            }
        }
    }

    background: Rectangle {
        radius: Math.min(Look.radius, height / 2)
        color: control.__ground.rest
        border.width: control.visualFocus ? Look.focusWidth : 0
        border.color: control.__ground.text
    }
}
