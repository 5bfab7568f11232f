// An item whose connections an application has cut takes its theme along all the same.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
        Theme.classnames: "quiet"
    }
    function step0() { fuzz.disconnect(one) }
    function step1() { fuzz.kill(one) }
}
