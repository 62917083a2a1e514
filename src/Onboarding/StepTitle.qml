import QtQuick
import KeloAppearance

// The heading of a step.
Text {
    width: parent.width
    color: Appearance.colors.label
    textFormat: Text.PlainText
    font { pixelSize: Math.round(22 * Appearance.textScale); weight: Font.Bold }
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
