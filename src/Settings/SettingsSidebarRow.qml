import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// One page in the sidebar.
T.ItemDelegate {
    id: root

    property string symbol
    property string tint

    implicitHeight: Math.round(32 * Appearance.textScale)
    focusPolicy: Qt.NoFocus

    Accessible.name: text
    Accessible.selectable: true
    Accessible.selected: highlighted
    Accessible.onPressAction: clicked()

    background: Rectangle {
        radius: 8
        color: root.highlighted ? Appearance.colors.controlHovered
                                : root.hovered ? Appearance.colors.cardFill : "transparent"
    }
    contentItem: Item {
        SettingsIcon {
            id: icon

            anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
            symbol: root.symbol
            tint: root.tint
            size: 20
        }
        Label {
            anchors { left: icon.right; leftMargin: 8; right: parent.right; rightMargin: 8 }
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            elide: Text.ElideRight
        }
    }
}
