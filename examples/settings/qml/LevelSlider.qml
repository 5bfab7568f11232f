import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

// A slider of whole numbers, in the colors of a class if one is given.
T.Slider {
    id: slider

    property string classnames

    readonly property color ink: Theme.colors.foreground
    readonly property color groove: Theme.colors.darkerBackground

    Theme.classnames: classnames
    implicitWidth: 160
    implicitHeight: 24
    stepSize: 1
    snapMode: T.Slider.SnapAlways

    background: Rectangle {
        x: slider.leftPadding
        y: (slider.height - height) / 2
        width: slider.availableWidth
        height: 4
        radius: 2
        color: slider.groove

        Rectangle {
            width: slider.visualPosition * parent.width
            height: parent.height
            radius: 2
            color: slider.ink
        }
    }
    handle: Rectangle {
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: (slider.height - height) / 2
        width: 20
        height: 20
        radius: Math.min(slider.Theme.radius, 10)
        color: slider.ink
        border.width: slider.visualFocus ? 4 : 0
        border.color: slider.groove
    }
}
