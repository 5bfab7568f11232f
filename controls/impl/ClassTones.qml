import QtQuick 2.15
import Tavolins 1.0

// What the controls with the same class names share. Of a class with a background of its own only
// the two base colors are used, as a scope that leaves out the shades has those of the page: what
// is emphasized in it is the two exchanged.
Tones {
    property string classnames

    Theme.classnames: classnames

    foreground: Theme.colors.foreground
    background: Theme.colors.background
    lighterBackground: stands ? background : Look.lighterBackground
    darkerBackground: stands ? background : Look.darkerBackground
    selection: Theme.colors.selection
    stands: background !== Look.background
    accentBackground: stands ? foreground : Look.accentBackground
    accentForeground: stands ? background : Look.accentForeground
}
