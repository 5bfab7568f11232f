pragma Singleton

import QtQuick 2.15
import QtQuick.Controls.impl 2.15
import QtQuick.Templates 2.15 as T
import Tavolins 1.0

// What all controls have in common, read from the theme once for all of them.
QtObject {
    id: look

    readonly property color foreground: Theme.colors.foreground
    readonly property color background: Theme.colors.background
    readonly property color lighterBackground: Theme.colors.lighterBackground
    readonly property color darkerBackground: Theme.colors.darkerBackground
    readonly property color selection: Theme.colors.selection
    readonly property int radius: Theme.radius
    readonly property font font: Theme.fonts.mainFont

    // A theme without this class, or one whose class leaves the background alone, emphasizes by the
    // class's foreground.
    readonly property color accentBackground: primary.fills ? primary.background : primary.foreground
    readonly property color accentForeground: primary.fills ? primary.foreground : background

    readonly property int padding: 7
    readonly property int spacing: 7
    readonly property int touchHeight: 32
    readonly property int grooveSize: 6
    readonly property int handleSize: 20
    readonly property int focusWidth: 2
    readonly property real indicatorScale: 1.3
    readonly property real disabledOpacity: 0.4
    readonly property int duration: 120

    // What dims the window under a modal popup: the darker one, in dark themes as well.
    readonly property color shadow: foreground.hslLightness < background.hslLightness ? foreground
                                                                                      : background

    readonly property color modalDim: Color.transparent(shadow, 0.5)
    readonly property color modelessDim: Color.transparent(shadow, 0.16)

    // What windows and popups hand to items that know nothing of themes. Taken over when an update
    // is complete: a window hands each role that is written to its palette to all that is in it.
    property var palette

    readonly property QtObject primary: QtObject {
        Theme.classnames: "primary"

        readonly property color foreground: Theme.colors.foreground
        readonly property color background: Theme.colors.background
        readonly property bool fills: background !== look.background
    }

    readonly property T.Control roles: T.Control {
        palette {
            window: look.background
            windowText: look.foreground
            base: look.background
            alternateBase: look.lighterBackground
            text: look.foreground
            button: look.lighterBackground
            buttonText: look.foreground
            brightText: look.accentForeground
            highlight: look.foreground
            highlightedText: look.selection
            toolTipBase: look.lighterBackground
            toolTipText: look.foreground
            link: look.foreground
            linkVisited: look.foreground
            light: look.lighterBackground
            midlight: look.lighterBackground
            mid: look.tones.groove
            dark: look.tones.groove
            shadow: look.shadow
        }
    }

    readonly property Component tonesComponent: Component {
        Tones {
            foreground: look.foreground
            background: look.background
            lighterBackground: look.lighterBackground
            darkerBackground: look.darkerBackground
            selection: look.selection
            accentBackground: look.accentBackground
            accentForeground: look.accentForeground
        }
    }
    readonly property Component classTonesComponent: Component {
        ClassTones { }
    }

    // Of controls without a class. Tones are no children of this object, which an engine destroys
    // while there are controls: the engine has them until no binding is left to miss them.
    readonly property QtObject tones: tonesComponent.createObject()
    // Without a prototype, whose members could be class names.
    readonly property var tonesOfClasses: Object.create(null)

    // The tones for an item's class names: one object for all items that have the same ones.
    function ofClass(classnames) {
        if (!tonesOfClasses[classnames])
            tonesOfClasses[classnames] =
                    classTonesComponent.createObject(null, { "classnames": classnames })
        return tonesOfClasses[classnames]
    }

    Component.onCompleted: palette = roles.palette
    Theme.onNeedUpdate: palette = roles.palette
}
