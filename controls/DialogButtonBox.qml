import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import Tavolins 1.0
import "impl"

T.DialogButtonBox {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).flat

    padding: 2 * Look.padding
    // Look.spacing would come too late: the buttons are laid out before bindings are evaluated.
    spacing: 7

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding)
    alignment: Qt.AlignRight

    delegate: Button { }

    contentItem: ListView {
        model: control.contentModel
        spacing: control.spacing
        orientation: ListView.Horizontal
        boundsBehavior: Flickable.StopAtBounds
        snapMode: ListView.SnapToItem
    }

    background: Rectangle {
        x: 1
        y: 1
        width: parent.width - 2
        height: parent.height - 2
        radius: Look.radius
        color: control.__ground.rest
    }
}
