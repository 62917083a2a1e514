import QtQuick
import KeloAppearance

// A quiet sheet behind something that belongs together.
Item {
    property alias radius: sheet.radius

    Box {
        id: sheet

        anchors.fill: parent
        radius: 10
        color: Appearance.colors.cardFill
        edge: Appearance.colors.cardBorder
        edgeWidth: 0.75
    }
}
