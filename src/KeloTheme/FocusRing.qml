import QtQuick
import KeloAppearance

// Shows around its parent that the keyboard is there.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    visible: parent.activeFocus && Appearance.usesKeyboard
    radius: height / 2
    color: "transparent"
    border { width: 2; color: Appearance.colors.focusRing }
}
