import QtQuick
import KeloAppearance

// A quiet sheet behind something that belongs together.
Rectangle {
    radius: 10
    color: Appearance.colors.cardFill
    border { width: 0.75; color: Appearance.colors.cardBorder }
}
