import QtQuick 2.12
import Tavolins 1.0

Item {
    id: sample

    property string style
    property string classname
    property real availableWidth

    readonly property string caption: classname.length > 0 ? style + ", " + classname : style
    // Depends on the current theme: its file may bring other styles.
    readonly property url source: Theme.colors ? Theme.getStyle(style, classname) : ""

    implicitWidth: Math.min(availableWidth, Math.max(loader.width, label.implicitWidth))
    implicitHeight: loader.height + label.height + 8
    clip: loader.width > availableWidth

    // What a style is filled with, as far as it has such properties.
    readonly property var samples: ({
        "Card": { "title": "Card", "text": "Raised from the page, with a quiet line of text." },
        "Field": { "text": "Some words selected", "placeholderText": "Field" }
    })

    function fill(item) {
        const values = samples[style] || { "title": style, "text": classname || style }
        for (const name in values) {
            if (name in item)
                item[name] = values[name]
        }
        if ("selectWord" in item) {
            item.cursorPosition = 6
            item.selectWord()
        }
    }

    Loader {
        id: loader

        source: sample.source
        onLoaded: sample.fill(item)
    }

    Caption {
        id: label

        anchors.bottom: parent.bottom
        width: Math.min(implicitWidth, sample.availableWidth)
        text: sample.caption
        font.pixelSize: 11
    }
}
