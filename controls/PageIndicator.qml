import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.PageIndicator {
    id: control

    padding: Look.padding
    spacing: Look.spacing
    opacity: enabled ? 1 : Look.disabledOpacity

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    delegate: Rectangle {
        implicitWidth: 8
        implicitHeight: 8
        radius: Look.radius > 0 ? width / 2 : 0
        color: index === control.currentIndex ? (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).accent.rest
               : pressed ? (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).page.placeholder : (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look).page.outline
    }

    contentItem: Row {
        spacing: control.spacing

        Repeater {
            model: control.count
            delegate: control.delegate
        }
    }
}
