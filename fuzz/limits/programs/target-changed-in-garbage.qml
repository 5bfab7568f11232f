// The target of a Connections must not change once the object around it is garbage: its handlers are
// to be compiled in a context that has no engine any more.
Item {
    id: root
    property int tick: 0
    Component {
        id: maker
        Item {
            property QtObject listener: Connections {
                target: root.tick % 2 ? root : null
                function onWidthChanged() { fuzz.note(0) }
            }
        }
    }
    function step0() { maker.createObject(null); gc(); root.tick++ }
}
