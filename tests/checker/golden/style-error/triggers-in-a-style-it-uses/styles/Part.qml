import QtQuick 2.12

Item {
    hight: 4
}
