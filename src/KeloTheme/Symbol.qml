import QtQuick

// One of the theme's symbols, in one colour, sharp at any size and pixel ratio.
Image {
    required property string name
    property color color
    property real size: 16

    width: size
    height: size
    sourceSize: Qt.size(Math.round(size * Screen.devicePixelRatio), Math.round(size * Screen.devicePixelRatio))
    // Not compiled, for the sake of toString(): in compiled code Qt 6.4 may collect the text of a colour too early.
    source: name ? "image://symbol/" + name + "/" + color.toString() : ""
}
