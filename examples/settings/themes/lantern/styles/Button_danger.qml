import QtQuick 2.15
import Tavolins 1.0

Button {
    Theme.classnames: "danger"
}
