import QtQuick 2.15
import QtQuick.Controls.impl 2.15

// What a control is painted with: four grounds, and the few colors beside them. Controls read from
// here what they show, so that in a switch each of their colors is computed once for all of them.
QtObject {
    id: tones

    property color foreground
    property color background
    property color lighterBackground
    property color darkerBackground
    property color selection
    property color accentBackground
    property color accentForeground

    // Whether controls without a ground of their own bring one along.
    property bool stands: false

    readonly property color groove: Color.blend(darkerBackground, foreground, 0.15)

    readonly property Ground page: Ground {
        rest: tones.background
        text: tones.foreground
        selection: tones.selection
        emphasis: tones.accent
    }

    readonly property Ground raised: Ground {
        rest: tones.lighterBackground
        text: tones.foreground
        selection: tones.selection
        emphasis: tones.accent
    }

    readonly property Ground flat: Ground {
        rest: tones.stands ? tones.page.rest : Color.transparent(text, 0)
        hovered: tones.stands || !tones.page.hasContrastToSpare
                 ? tones.page.hovered : Color.transparent(text, hoverTint)
        pressed: tones.stands || !tones.page.hasContrastToSpare
                 ? tones.page.pressed : Color.transparent(text, pressTint)
        text: tones.foreground
        selection: tones.selection
        emphasis: tones.accent
    }

    readonly property Ground accent: Ground {
        rest: tones.accentBackground
        text: tones.accentForeground
        emphasis: tones.inverse
    }

    readonly property Ground inverse: Ground {
        rest: tones.accentForeground
        text: tones.accentBackground
        emphasis: tones.accent
    }
}
