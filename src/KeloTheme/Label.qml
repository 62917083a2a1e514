import QtQuick
import KeloAppearance

// Plain text in the size that the user has set. What a screen reader says of it, the control around it tells.
Text {
    property real size: 13

    textFormat: Text.PlainText
    color: Appearance.colors.label
    font.family: Appearance.fontFamily
    font.pixelSize: Math.round(size * Appearance.textScale)
    horizontalAlignment: Text.AlignLeft
    Accessible.ignored: true
}
