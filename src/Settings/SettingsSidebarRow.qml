import QtQuick
import KeloAppearance
import KeloThemeViews

// One page in the sidebar.
Rectangle {
    id: root

    property string title
    property string symbol
    property string tint
    property bool isSelected

    signal clicked

    implicitHeight: Math.round(32 * Appearance.textScale)
    radius: 8
    color: isSelected ? Appearance.colors.controlHovered
                      : hover.hovered ? Appearance.colors.cardFill : "transparent"

    Accessible.role: Accessible.ListItem
    Accessible.name: title
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()

    SettingsIcon {
        id: icon

        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
        symbol: root.symbol
        tint: root.tint
        size: 20
    }
    Text {
        anchors { left: icon.right; leftMargin: 8; right: parent.right; rightMargin: 8 }
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        textFormat: Text.PlainText
        color: Appearance.colors.label
        font.pixelSize: Math.round(13 * Appearance.textScale)
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    HoverHandler { id: hover }
    TapHandler { onTapped: root.clicked() }
}
