// "StackView: cannot clear while already in the process of completing a clear"
Item {
    id: root
    StackView {
        id: stack
        width: 50; height: 50
        initialItem: Component { Item { Component.onDestruction: fuzz.run(0) } }
    }
    function act0() { stack.clear() }
    function step0() { stack.clear() }
}
