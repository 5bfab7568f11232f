// The same with an item that native code deletes.
Item {
    id: root
    property int tick: 0
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
        Theme.classnames: root.tick % 2 ? "warning" : "quiet"
    }
    function step0() { fuzz.kill(one); root.tick++ }
}
