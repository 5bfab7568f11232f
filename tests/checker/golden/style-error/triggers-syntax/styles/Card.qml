import QtQuick 2.12

Rectangle {
    width: 4 4
}
