import QtQuick 2.15
import QtQuick.Controls.impl 2.15

// A surface, what it turns into under the mouse, and what is drawn on it.
QtObject {
    property color rest
    property color text
    // Selected text, which stands on the color of the text.
    property color selection

    // What stands out from this ground.
    property QtObject emphasis

    // How well the text is read: as WCAG 2 has it, but for the exponent.
    readonly property real restLuminance: 0.2126 * Math.pow(rest.r, 2.2)
                                          + 0.7152 * Math.pow(rest.g, 2.2)
                                          + 0.0722 * Math.pow(rest.b, 2.2)
    readonly property real textLuminance: 0.2126 * Math.pow(text.r, 2.2)
                                          + 0.7152 * Math.pow(text.g, 2.2)
                                          + 0.0722 * Math.pow(text.b, 2.2)
    readonly property bool isDark: restLuminance < textLuminance
    readonly property real contrast: isDark ? (textLuminance + 0.05) / (restLuminance + 0.05)
                                            : (restLuminance + 0.05) / (textLuminance + 0.05)

    // Towards the text, where that leaves it readable, else away from it.
    readonly property bool hasContrastToSpare: contrast > 6
    readonly property real hoverTint: 0.06
    readonly property real pressTint: 0.12
    property color hovered: hasContrastToSpare ? Color.blend(rest, text, hoverTint)
                            : isDark ? Qt.darker(rest, 1 + 2 * hoverTint)
                                     : Qt.lighter(rest, 1 + 2 * hoverTint)
    property color pressed: hasContrastToSpare ? Color.blend(rest, text, pressTint)
                            : isDark ? Qt.darker(rest, 1 + 2 * pressTint)
                                     : Qt.lighter(rest, 1 + 2 * pressTint)

    readonly property color outline: Color.transparent(text, 0.55)
    readonly property color placeholder: Color.transparent(text, contrast > 12 ? 0.7
                                                                 : contrast > 8 ? 0.85 : 1)
    readonly property color disabled: Color.transparent(text, 0.4)
}
