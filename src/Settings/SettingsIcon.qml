import QtQuick
import KeloAppearance
import KeloThemeViews

// A page's symbol on a small tile.
Rectangle {
    id: root

    property string symbol
    // The role of a colour; gray is that of secondary text.
    property string tint
    property real size: 20

    readonly property color primary: Appearance.colors.label

    width: size
    height: size
    radius: size * 0.26
    color: Qt.rgba(primary.r, primary.g, primary.b, 0.08)

    Symbol {
        anchors.centerIn: parent
        name: root.symbol
        size: Math.round(root.size * 0.65)
        color: root.tint === "gray" ? Appearance.colors.secondaryLabel : Appearance.colors[root.tint]
    }
}
