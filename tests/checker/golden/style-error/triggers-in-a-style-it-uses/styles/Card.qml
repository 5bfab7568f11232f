import QtQuick 2.12

Part {}
