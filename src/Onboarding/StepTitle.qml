import QtQuick
import KeloAppearance

// The heading of a step. It is large already: it grows less than the text below it, and stays in one line.
Text {
    width: parent.width
    color: Appearance.colors.label
    textFormat: Text.PlainText
    font { pixelSize: Math.round(22 * Math.min(Appearance.textScale, 1.12)); weight: Font.Bold }
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    Accessible.role: Accessible.Heading
    Accessible.name: text
}
