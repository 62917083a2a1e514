import QtQuick
import KeloAppearance

// Small print.
Text {
    textFormat: Text.PlainText
    color: Appearance.colors.secondaryLabel
    font.pixelSize: Math.round(11 * Appearance.textScale)
    lineHeight: 1.1
    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
}
