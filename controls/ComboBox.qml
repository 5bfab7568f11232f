import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Window 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.ComboBox {
    id: control

    readonly property QtObject __look: Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones
    readonly property QtObject __ground: flat ? __look.flat : editable ? __look.page : __look.raised

    padding: Look.padding
    leftPadding: padding + (mirrored && indicator && indicator.visible ? indicator.width + spacing : 0)
    rightPadding: padding + (!mirrored && indicator && indicator.visible ? indicator.width + spacing : 0)
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)

    delegate: ItemDelegate {
        width: ListView.view.width
        text: control.textRole ? Array.isArray(control.model) ? modelData[control.textRole]
                                                              : model[control.textRole]
                               : modelData
        highlighted: control.highlightedIndex === index
        hoverEnabled: control.hoverEnabled
        Theme.classnames: control.Theme.classnames
    }

    indicator: ColorImage {
        x: control.mirrored ? control.padding : control.width - width - control.padding
        y: control.topPadding + (control.availableHeight - height) / 2
        width: control.font.pixelSize
        height: width
        sourceSize.width: width
        sourceSize.height: width
        color: control.__ground.text
        source: "impl/images/down.png"
    }

    contentItem: T.TextField {
        implicitHeight: contentHeight
        leftPadding: control.mirrored ? 0 : control.padding
        rightPadding: control.mirrored ? control.padding : 0
        text: control.editable ? control.editText : control.displayText
        enabled: control.editable
        autoScroll: control.editable
        readOnly: control.down
        inputMethodHints: control.inputMethodHints
        validator: control.validator
        selectByMouse: control.selectTextByMouse
        font: control.font
        color: control.__ground.text
        selectionColor: control.__ground.text
        selectedTextColor: control.__ground.selection
        verticalAlignment: Text.AlignVCenter
    }

    background: Rectangle {
        implicitWidth: control.font.pixelSize * 9
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, height / 2)
        color: control.down ? control.__ground.pressed
               : control.hovered ? control.__ground.hovered : control.__ground.rest
        border.width: control.activeFocus ? Look.focusWidth : control.flat ? 0 : 1
        border.color: control.activeFocus ? control.__ground.text : control.__ground.outline
    }

    popup: T.Popup {
        y: control.height
        width: control.width
        height: Math.min(contentItem.implicitHeight + 2 * padding,
                         control.Window.height - topMargin - bottomMargin)
        topMargin: Look.padding
        bottomMargin: Look.padding
        padding: Look.spacing / 2
        font: control.font
        palette: control.palette

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: control.delegateModel
            currentIndex: control.highlightedIndex
            highlightMoveDuration: 0

            T.ScrollIndicator.vertical: ScrollIndicator {
                Theme.classnames: control.Theme.classnames
            }
        }

        background: Rectangle {
            radius: Math.min(Look.radius, Look.touchHeight / 2)
            color: control.__look.raised.rest
            border.color: control.__look.raised.outline
        }
    }
}
