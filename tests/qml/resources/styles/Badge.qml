import QtQuick 2.15

Item {
    property string text: "badge from the resources"
}
