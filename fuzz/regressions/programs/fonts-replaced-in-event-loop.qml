// A handler of the fonts of an item with a class runs an event loop, in which the theme's file is
// read again and the fonts are replaced.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
        Theme.classnames: "quiet"
    }
    Connections { id: listener; target: null; function onH1FontChanged() { fuzz.run(0) } }
    function act0() { fuzz.save(); fuzz.loop(1) }
    function step0() { listener.target = one.Theme.fonts; one.Theme.fonts.h1Font = Qt.font({ pointSize: 40 }) }
}
