import QtQuick 2.12
import Tavolins 1.0

Button {
    Theme.classnames: "primary"
}
