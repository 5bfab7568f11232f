import QtQuick 2.12
import QtQuick.Controls 2.12 as Controls
import Tavolins 1.0

// The variants beside this file only add a class name, which changes color and font.
Controls.Button {
    font: Theme.fonts.mainFont
}
