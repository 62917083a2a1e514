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

    Label {
        width: root.width - 24
        text: root.title
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
    }
    Footnote {
        visible: text
        width: root.width - 24
        text: root.footnote
    }
}
