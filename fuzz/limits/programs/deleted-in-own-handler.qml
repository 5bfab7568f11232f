// An object must not be deleted while a handler in its own QML runs, whoever sends the signal:
// "Object destroyed while one of its QML signal handlers is in progress".
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
        Theme.onNeedUpdate: fuzz.run(0)
    }
    function act0() { fuzz.kill(one) }
    function step0() { fuzz.reload() }
}
