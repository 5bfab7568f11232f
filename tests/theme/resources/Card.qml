import QtQml 2.2

QtObject {
    objectName: "card"
}
