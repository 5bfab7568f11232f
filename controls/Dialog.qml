import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Tavolins 1.0
import "impl"

T.Dialog {
    id: control

    readonly property QtObject __ground: (Theme.classnames ? Look.ofClass(Theme.classnames) : Look.tones).page

    padding: 2 * Look.padding
    font: (T.ApplicationWindow.window || Look).font
    palette: (T.ApplicationWindow.window || Look).palette

    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            contentWidth + leftPadding + rightPadding,
                            implicitHeaderWidth,
                            implicitFooterWidth)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             contentHeight + topPadding + bottomPadding
                             + (implicitHeaderHeight > 0 ? implicitHeaderHeight + spacing : 0)
                             + (implicitFooterHeight > 0 ? implicitFooterHeight + spacing : 0))

    header: Label {
        text: control.title
        visible: control.title
        // Not always: eliding lays the text out again while the width follows the font.
        elide: width < implicitWidth ? Label.ElideRight : Label.ElideNone
        font.bold: true
        padding: 2 * Look.padding
        bottomPadding: 0
        Theme.classnames: control.Theme.classnames
    }

    footer: DialogButtonBox {
        visible: count > 0
        Theme.classnames: control.Theme.classnames
    }

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
