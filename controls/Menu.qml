import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import QtQuick.Window 2.15
import Tavolins 1.0
import "impl"

T.Menu {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).raised

    margins: 0
    padding: Look.spacing / 2
    overlap: Look.spacing / 2
    font: (T.ApplicationWindow.window || Look).font
    palette: (T.ApplicationWindow.window || Look).palette

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)

    delegate: MenuItem {
        Theme.classnames: control.Theme.classnames
    }

    contentItem: ListView {
        // Not by what the items take: the template makes each as wide as the menu.
        implicitWidth: {
            let widest = 0
            for (let i = 0; i < control.count; ++i)
                widest = Math.max(widest, control.itemAt(i).implicitWidth)
            return widest
        }
        implicitHeight: contentHeight
        model: control.contentModel
        interactive: Window.window ? contentHeight + control.topPadding + control.bottomPadding
                                     > Window.window.height : false
        clip: true
        currentIndex: control.currentIndex

        ScrollIndicator.vertical: ScrollIndicator {
            Theme.classnames: control.Theme.classnames
        }
    }

    background: Rectangle {
        implicitWidth: Look.touchHeight * 5
        implicitHeight: Look.touchHeight
        radius: Math.min(Look.radius, Look.touchHeight / 2)
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
