import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Popup {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).page

    padding: 2 * Look.padding
    font: (T.ApplicationWindow.window || Look).font
    palette: (T.ApplicationWindow.window || Look).palette

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    background: Rectangle {
        radius: Look.radius
        color: control.__ground.rest
        border.color: control.__ground.outline
    }

    T.Overlay.modal: Rectangle {
        color: Look.modalDim
    }

    T.Overlay.modeless: Rectangle {
        color: Look.modelessDim
    }
}
