import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0
import "impl"

T.Switch {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat

    padding: Look.padding
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)

    indicator: SwitchIndicator {
        x: control.text ? control.mirrored ? control.width - width - control.rightPadding
                                           : control.leftPadding
                        : control.leftPadding + (control.availableWidth - width) / 2
        y: control.topPadding + (control.availableHeight - height) / 2
        control: control
    }

    contentItem: Text {
        leftPadding: control.mirrored ? 0 : control.indicator.width + control.spacing
        rightPadding: control.mirrored ? control.indicator.width + control.spacing : 0
        text: control.text
        font: control.font
        color: control.__ground.text
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        radius: Math.min(Look.radius, height / 2)
        color: control.__ground.rest
        border.width: control.visualFocus ? Look.focusWidth : 0
        border.color: control.__ground.text
    }
}
