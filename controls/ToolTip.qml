import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

// Without a property for the ground: the tool tip that all items share outlives what the engine has of
// JavaScript's, and the property would tell of the ground's end when nothing can be evaluated any more.
T.ToolTip {
    id: control

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: -implicitHeight - Look.spacing

    margins: Look.padding
    padding: Look.padding
    font: (T.ApplicationWindow.window || Look).font
    palette: (T.ApplicationWindow.window || Look).palette

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
                 | T.Popup.CloseOnReleaseOutsideParent

    contentItem: Text {
        text: control.text
        font: control.font
        color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look.tones).raised.text
        wrapMode: Text.Wrap
    }

    background: Rectangle {
        radius: Look.radius
        color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look.tones).raised.rest
        border.color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look.tones).raised.outline
    }
}
