import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Drawer {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).page

    parent: T.Overlay.overlay

    topPadding: edge === Qt.BottomEdge ? 1 : 0
    leftPadding: edge === Qt.RightEdge ? 1 : 0
    rightPadding: edge === Qt.LeftEdge ? 1 : 0
    bottomPadding: edge === Qt.TopEdge ? 1 : 0
    font: (T.ApplicationWindow.window || Look).font
    palette: (T.ApplicationWindow.window || Look).palette

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    enter: Transition {
        SmoothedAnimation {
            velocity: 5
        }
    }

    exit: Transition {
        SmoothedAnimation {
            velocity: 5
        }
    }

    background: Rectangle {
        color: control.__ground.rest

        Rectangle {
            x: control.edge === Qt.LeftEdge ? parent.width - width : 0
            y: control.edge === Qt.TopEdge ? parent.height - height : 0
            width: control.edge === Qt.LeftEdge || control.edge === Qt.RightEdge ? 1 : parent.width
            height: control.edge === Qt.LeftEdge || control.edge === Qt.RightEdge ? parent.height : 1
            color: control.__ground.outline
        }
    }

    T.Overlay.modal: Rectangle {
        color: Look.modalDim
    }

    T.Overlay.modeless: Rectangle {
        color: Look.modelessDim
    }
}
