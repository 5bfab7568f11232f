// The target of a Connections must not change in an event loop that its handler runs: the engine
// leaves the running handler's connection to deleteLater(), which that loop carries out.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
    }
    Connections {
        target: one ? one.Theme.colors : null
        function onSelectionChanged() { fuzz.run(0) }
    }
    function act0() { fuzz.loop(1) }
    function act1() { fuzz.kill(one) }
    function step0() { fuzz.reload() }
}
