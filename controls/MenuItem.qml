import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.MenuItem {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: highlighted ? __look.accent : __look.flat

    padding: Look.padding
    horizontalPadding: 2 * padding
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)

    icon.width: 20
    icon.height: 20
    icon.color: __ground.text

    indicator: CheckIndicator {
        x: control.mirrored ? control.width - width - control.rightPadding : control.leftPadding
        y: control.topPadding + (control.availableHeight - height) / 2
        visible: control.checkable
        control: control
        checkState: control.checked ? Qt.Checked : Qt.Unchecked
    }

    arrow: ColorImage {
        x: control.mirrored ? control.leftPadding : control.width - width - control.rightPadding
        y: control.topPadding + (control.availableHeight - height) / 2
        width: control.font.pixelSize
        height: width
        sourceSize.width: width
        sourceSize.height: width
        mirror: control.mirrored
        color: control.__ground.text
        source: "impl/images/next.png"
        visible: control.subMenu
    }

    contentItem: IconLabel {
        readonly property real start: control.checkable && control.indicator
                                      ? control.indicator.width + control.spacing : 0
        readonly property real end: control.subMenu && control.arrow
                                    ? control.arrow.width + control.spacing : 0

        leftPadding: control.mirrored ? end : start
        rightPadding: control.mirrored ? start : end
        alignment: Qt.AlignLeft
        spacing: control.spacing
        mirrored: control.mirrored
        display: control.display
        icon: control.icon
        text: control.text
        font: control.font
        color: control.__ground.text
    }

    background: Rectangle {
        implicitWidth: Look.touchHeight * 5
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, height / 2)
        color: control.down ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.visualFocus ? Look.focusWidth : 0
        border.color: control.__ground.text
    }
}
