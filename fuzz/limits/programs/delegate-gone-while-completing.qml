// A delegate that goes while it is being completed takes the rest of its handler's names along:
// "fuzz is not defined".
Item {
    id: root
    Repeater {
        id: view
        model: 1
        Item {
            property QtObject menu: Menu {
                MenuItem {
                    Theme.onThemeObjectChanged: fuzz.runGently(0)
                    Component.onCompleted: { Theme.classnames = "quiet"; fuzz.note(0) }
                }
            }
        }
    }
    function act0() { view.model = 2 }
    function step0() { view.model = 3 }
}
