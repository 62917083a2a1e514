import QtQuick

// One of the theme's symbols, in one colour, sharp at any size and pixel ratio.
Image {
    required property string name
    property color color
    property real size: 16

    width: size
    height: size
    sourceSize: Qt.size(Math.round(size * Screen.devicePixelRatio), Math.round(size * Screen.devicePixelRatio))
    source: name ? "image://symbol/" + name + "/" + color : ""
}
