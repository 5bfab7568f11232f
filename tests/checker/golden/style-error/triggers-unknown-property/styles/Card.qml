import QtQuick 2.12

Rectangle {
    widht: 4
}
