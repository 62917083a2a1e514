import QtQuick
import KeloThemeViews

// The heading of a step.
Label {
    // The last line has two words at least.
    required property string words

    text: words.replace(/ (\S+)$/, "\u00a0$1")
    width: parent.width
    size: 22
    font.weight: Font.Bold
    horizontalAlignment: Text.AlignHCenter
    wrapMode: Text.Wrap
    Accessible.ignored: false
    Accessible.role: Accessible.Heading
    Accessible.name: words
}
