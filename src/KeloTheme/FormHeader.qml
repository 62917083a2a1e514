import QtQuick
import KeloAppearance

// The title above a group of settings, with a line of explanation where there is one.
Column {
    id: root

    property string title
    property string footnote

    width: parent ? parent.width : 0
    leftPadding: 12
    rightPadding: 12
    bottomPadding: 7
    spacing: 3

    Accessible.role: Accessible.Heading
    Accessible.name: title
    Accessible.description: footnote

    Text {
        width: root.width - 24
        text: root.title
        textFormat: Text.PlainText
        color: Appearance.colors.label
        font { pixelSize: Math.round(13 * Appearance.textScale); weight: Font.DemiBold }
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Footnote {
        visible: text
        width: root.width - 24
        text: root.footnote
        Accessible.ignored: true
    }
}
