import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0
import "impl"

T.ApplicationWindow {
    font: Look.font
    palette: Look.palette
    color: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).background

    overlay.modal: Rectangle {
        color: Look.modalDim
    }

    overlay.modeless: Rectangle {
        color: Look.modelessDim
    }
}
