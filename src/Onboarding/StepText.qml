import QtQuick
import KeloAppearance

// A paragraph of a step, centred, in lines of a legible length.
Text {
    property real maximumWidth: 420

    anchors.horizontalCenter: parent.horizontalCenter
    width: Math.min(parent.width, maximumWidth)
    color: Appearance.colors.secondaryLabel
    textFormat: Text.PlainText
    font.pixelSize: Math.round(13 * Appearance.textScale)
    lineHeight: 1.15
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
