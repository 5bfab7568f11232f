// A binding on an attached theme, in a context that outlives the item.
Item {
    id: root
    property int tick: 0
    TabBar {
        id: bar
        TabButton {
            id: one
            property QtObject mark: Mark {}
            %PROBE%
            Theme.classnames: root.tick % 2 ? "warning" : "quiet"
        }
        TabButton {}
    }
    function step0() { bar.removeItem(one); Qt.callLater(() => root.tick++) }
}
