// A handler of the colors of an item with a class runs an event loop, in which the item dies.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
        Theme.classnames: "quiet"
    }
    Connections { id: listener; target: null; function onForegroundChanged() { fuzz.run(0) } }
    function act0() { fuzz.loop(1) }
    function act1() { fuzz.kill(one) }
    function step0() { listener.target = one.Theme.colors; one.Theme.colors.foreground = "red" }
}
