import QtQuick
import KeloAppearance

// Shows around its parent that the keyboard is there.
Box {
    anchors.fill: parent
    anchors.margins: -3
    visible: parent.activeFocus && Appearance.usesKeyboard
    radius: height / 2
    color: "transparent"
    edge: Appearance.colors.mark
    edgeWidth: 2
}
