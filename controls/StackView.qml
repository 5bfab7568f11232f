import QtQuick 2.15
import QtQuick.Templates 2.15 as T
import "impl"

T.StackView {
    id: control

    popEnter: Transition {
        NumberAnimation {
            property: "x"
            from: control.mirrored ? control.width : -control.width
            to: 0
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }

    popExit: Transition {
        NumberAnimation {
            property: "x"
            from: 0
            to: control.mirrored ? -control.width : control.width
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }

    pushEnter: Transition {
        NumberAnimation {
            property: "x"
            from: control.mirrored ? -control.width : control.width
            to: 0
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }

    pushExit: Transition {
        NumberAnimation {
            property: "x"
            from: 0
            to: control.mirrored ? control.width : -control.width
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }

    replaceEnter: Transition {
        NumberAnimation {
            property: "x"
            from: control.mirrored ? -control.width : control.width
            to: 0
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }

    replaceExit: Transition {
        NumberAnimation {
            property: "x"
            from: 0
            to: control.mirrored ? control.width : -control.width
            duration: 2 * Look.duration
            easing.type: Easing.OutCubic
        }
    }
}
