// An object that is garbage has no attached objects any more, while bindings on their properties
// are still evaluated until it is deleted: "Cannot read property 'radius' of undefined".
Item {
    id: root
    Component {
        id: maker
        Item { Theme.classnames: Theme.radius % 2 ? "quiet" : "warning" }
    }
    function act0() { fuzz.reload() }
    function step0() { maker.createObject(null); gc(); fuzz.loop(0) }
}
