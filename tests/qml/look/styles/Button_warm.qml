import QtQuick 2.12
Item {}
