import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.VerticalHeaderView {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).raised

    implicitWidth: contentWidth
    implicitHeight: syncView ? syncView.height : 0

    // Tables don't ask again how large their cells want to be.
    Theme.onNeedUpdate: forceLayout()

    delegate: Rectangle {
        implicitWidth: Math.max(control.width, label.implicitWidth)
        implicitHeight: label.implicitHeight
        color: control.__ground.rest
        border.color: control.__ground.outline

        Text {
            id: label
            width: parent.width
            height: parent.height
            padding: Look.padding
            text: control.textRole ? Array.isArray(control.model) ? modelData[control.textRole]
                                                                  : model[control.textRole]
                                   : modelData
            font: Look.font
            color: control.__ground.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
}
