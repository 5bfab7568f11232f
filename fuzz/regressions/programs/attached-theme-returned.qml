// A function of the application returns the attached theme, which makes it no garbage.
Item {
    id: root
    Item {
        id: one
        property QtObject mark: Mark {}
        %PROBE%
    }
    function step0() { fuzz.themeOf(one) }
    function step1() { gc() }
    function step2() { ThemeManager.currentIndex = fuzz.row(2) }
}
