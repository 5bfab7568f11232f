// A view does not survive that its model is set while it creates its items.
Item {
    id: root
    property int tick: 0
    Repeater {
        id: view
        property QtObject mark: Mark {}
        %PROBE%
        model: (root.tick % 3 + 1)
        Loader {
            width: 20; height: 20
            %PROBE%
            active: root.tick % 2
            asynchronous: true
            sourceComponent: Component {
                Item {
                    width: 20; height: 20
                    %PROBE%
                    Theme.classnames: root.tick % 2 ? "other" : "wide"
                    Theme.onThemeObjectChanged: { fuzz.run(0) }
                    Text {
                        %PROBE%
                        property QtObject listener: Connections { target: Theme.colors; function onForegroundChanged() { fuzz.runGently(0) } }
                        text: "text"; color: shownForeground; font: shownMainFont
                    }
                }
            }
        }
    }
    function act0() { if (view) view.model = 1 }
    function step0() { root.tick++ }
}
