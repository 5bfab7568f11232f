import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.VerticalHeaderView {
    id: control

    implicitWidth: contentWidth
    implicitHeight: syncView ? syncView.height : 0

    // Tables don't ask again how large their cells want to be.
    Theme.onNeedUpdate: forceLayout()

    delegate: Rectangle {
        implicitWidth: Math.max(control.width, label.implicitWidth)
        implicitHeight: label.implicitHeight
        color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).raised.rest
        border.color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).raised.outline

        Text {
            id: label
            width: parent.width
            height: parent.height
            padding: Look.padding
            text: control.textRole ? Array.isArray(control.model) ? modelData[control.textRole]
                                                                  : model[control.textRole]
                                   : modelData
            font: Look.font
            color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).raised.text
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
    }
}
