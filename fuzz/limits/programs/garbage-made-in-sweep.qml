// The garbage collector calls Component.onDestruction from its sweep, where code must not make
// garbage of its own.
Item {
    id: root
    property var kept: []
    Component {
        id: maker
        Item { Component.onDestruction: fuzz.run(0) }
    }
    function act0() { for (let i = 0; i < 20000; ++i) root.kept.push({ number: i }) }
    function step0() { for (let i = 0; i < 30; ++i) maker.createObject(null); gc() }
    function step1() { gc() }
    function step2() { gc() }
}
