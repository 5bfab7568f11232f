import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.MenuSeparator {
    id: control

    verticalPadding: Look.padding

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)

    contentItem: Rectangle {
        implicitWidth: Look.touchHeight * 5
        implicitHeight: 1
        color: (control.Theme.classnames ? Look.ofClass(control.Theme.classnames) : Look.tones).page.outline
    }
}
