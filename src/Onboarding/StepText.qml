import QtQuick
import KeloAppearance
import KeloThemeViews

// A paragraph of a step, centred, in lines of a legible length.
Label {
    // The last line has two words at least.
    required property string words

    text: words.replace(/ (\S+)$/, "\u00a0$1")
    property real maximumWidth: 420

    anchors.horizontalCenter: parent.horizontalCenter
    width: Math.min(parent.width, maximumWidth * Math.max(1, Appearance.textScale))
    color: Appearance.colors.secondaryLabel
    lineHeight: 1.15
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    Accessible.ignored: false
    Accessible.role: Accessible.StaticText
    Accessible.name: words
}
