import QtQuick 2.12
import Tavolins 1.0

// The gallery's own small print: in the theme's body font, at a size that always fits.
Text {
    font.family: Theme.fonts.mainFont.family
    font.pixelSize: 12
    color: Theme.colors.foreground
    elide: Text.ElideRight
}
