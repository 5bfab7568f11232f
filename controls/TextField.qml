import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.TextField {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).page

    padding: Look.padding
    leftPadding: 1.5 * padding
    rightPadding: 1.5 * padding
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: implicitBackgroundWidth + leftInset + rightInset
                   || Math.max(contentWidth, placeholder.implicitWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding,
                             placeholder.implicitHeight + topPadding + bottomPadding)
    color: __ground.text
    selectionColor: __ground.text
    selectedTextColor: __ground.selection
    placeholderTextColor: __ground.placeholder
    verticalAlignment: TextInput.AlignVCenter

    PlaceholderText {
        id: placeholder
        x: control.leftPadding
        y: control.topPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height - control.topPadding - control.bottomPadding
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        verticalAlignment: control.verticalAlignment
        visible: !control.length && !control.preeditText
                 && (!control.activeFocus || control.horizontalAlignment !== Qt.AlignHCenter)
        elide: Text.ElideRight
        renderType: control.renderType
    }

    background: Rectangle {
        implicitWidth: control.font.pixelSize * 12
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, Look.touchHeight / 2)
        color: control.hovered && !control.activeFocus ? control.__ground.hovered
                                                       : control.__ground.rest
        border.width: control.activeFocus ? Look.focusWidth : 1
        border.color: control.activeFocus ? control.__ground.text
                                          : control.__ground.outline
    }
}
