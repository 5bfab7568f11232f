import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.SpinBox {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: __look.page

    padding: Look.padding
    leftPadding: padding + (mirrored ? up.indicator ? up.indicator.width : 0
                                     : down.indicator ? down.indicator.width : 0)
    rightPadding: padding + (mirrored ? down.indicator ? down.indicator.width : 0
                                      : up.indicator ? up.indicator.width : 0)
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentItem.implicitWidth + 2 * padding + up.implicitIndicatorWidth
                            + down.implicitIndicatorWidth)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             up.implicitIndicatorHeight, down.implicitIndicatorHeight)

    validator: IntValidator {
        locale: control.locale.name
        bottom: Math.min(control.from, control.to)
        top: Math.max(control.from, control.to)
    }

    contentItem: TextInput {
        text: control.displayText
        font: control.font
        color: control.__ground.text
        selectionColor: control.__ground.text
        selectedTextColor: control.__ground.selection
        horizontalAlignment: Qt.AlignHCenter
        verticalAlignment: Qt.AlignVCenter
        readOnly: !control.editable
        validator: control.validator
        inputMethodHints: control.inputMethodHints
    }

    // Both indicators stay inside of the line around the control, whatever they are filled with.
    up.indicator: Rectangle {
        x: control.mirrored ? Look.focusWidth : parent.width - width - Look.focusWidth
        y: Look.focusWidth
        height: parent.height - 2 * Look.focusWidth
        implicitWidth: Math.max(Look.touchHeight, control.font.pixelSize + 2 * Look.padding)
        implicitHeight: Look.touchHeight
        radius: Math.max(0, Math.min(Look.radius, parent.height / 2) - Look.focusWidth)
        color: control.up.pressed ? control.__look.flat.pressed
               : control.up.hovered ? control.__look.flat.hovered : control.__look.flat.rest

        ColorImage {
            x: (parent.width - width) / 2
            y: (parent.height - height) / 2
            width: control.font.pixelSize
            height: width
            sourceSize.width: width
            sourceSize.height: width
            color: control.__ground.text
            source: "impl/images/plus.png"
            opacity: enabled || !control.enabled ? 1 : Look.disabledOpacity
        }
    }

    down.indicator: Rectangle {
        x: control.mirrored ? parent.width - width - Look.focusWidth : Look.focusWidth
        y: Look.focusWidth
        height: parent.height - 2 * Look.focusWidth
        implicitWidth: control.up.implicitIndicatorWidth
        implicitHeight: Look.touchHeight
        radius: Math.max(0, Math.min(Look.radius, parent.height / 2) - Look.focusWidth)
        color: control.down.pressed ? control.__look.flat.pressed
               : control.down.hovered ? control.__look.flat.hovered : control.__look.flat.rest

        ColorImage {
            x: (parent.width - width) / 2
            y: (parent.height - height) / 2
            width: control.font.pixelSize
            height: width
            sourceSize.width: width
            sourceSize.height: width
            color: control.__ground.text
            source: "impl/images/minus.png"
            opacity: enabled || !control.enabled ? 1 : Look.disabledOpacity
        }
    }

    background: Rectangle {
        implicitWidth: Look.touchHeight * 4
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, height / 2)
        color: control.hovered && !control.activeFocus ? control.__ground.hovered
                                                       : control.__ground.rest
        border.width: control.activeFocus ? Look.focusWidth : 1
        border.color: control.activeFocus ? control.__ground.text
                                          : control.__ground.outline
    }
}
