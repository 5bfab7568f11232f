// A component creates one object after another: "Cannot create new component instance before
// completing the previous".
Item {
    id: root
    Component {
        id: maker
        Item {
            property QtObject mark: Mark {}
            Component.onCompleted: fuzz.run(0)
        }
    }
    function act0() { maker.createObject(root) }
    function step0() { maker.createObject(root) }
}
