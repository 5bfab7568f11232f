import QtQuick 2.12
import Tavolins 1.0

Rectangle {
    id: header

    property QtObject currentTheme

    Theme.classnames: currentTheme.classNames.indexOf("header") >= 0 ? "header" : ""

    readonly property string origin: currentTheme.extends.length > 0
                                     ? currentTheme.fileName + "  ·  extends "
                                       + currentTheme.extends
                                     : currentTheme.fileName

    implicitHeight: column.implicitHeight + 36
    radius: Math.min(Theme.radius, height / 2)
    color: Theme.colors.background

    Column {
        id: column

        anchors {
            left: parent.left
            right: parent.right
            verticalCenter: parent.verticalCenter
            leftMargin: 24
            rightMargin: 24
        }
        spacing: 2

        Text {
            width: parent.width
            text: ThemeManager.current.title || header.currentTheme.fileName
            font: header.Theme.fonts.h1Font
            color: header.Theme.colors.foreground
            elide: Text.ElideRight
        }

        Text {
            width: parent.width
            text: header.origin
            font: header.Theme.fonts.mainFont
            color: header.Theme.colors.foreground
            elide: Text.ElideRight
        }
    }
}
