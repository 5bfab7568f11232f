// An object must not be deleted by one handler of a signal when it has another one that has not run
// yet: the engine takes that one for running.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        property QtObject listener: Connections {
            target: ThemeManager
            function onCurrentChanged() { fuzz.note(0) }
        }
    }
    Connections {
        target: ThemeManager
        function onCurrentChanged() { fuzz.kill(one) }
    }
    function step0() { ThemeManager.currentIndex = fuzz.row(2) }
}
