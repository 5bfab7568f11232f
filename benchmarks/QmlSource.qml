pragma Singleton
import QtQuick 2.15

QtObject {
    property color background
    property color foreground
    property int radius
    property font font
}
