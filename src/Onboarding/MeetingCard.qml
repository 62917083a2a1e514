import QtQuick
import KeloAppearance
import KeloThemeViews

// The next meeting: its calendar's colour, its title, when and where it is.
KeloCard {
    id: root

    // title, detail, color.
    required property QtObject model

    implicitHeight: texts.height + 24

    Accessible.role: Accessible.StaticText
    Accessible.name: model.title + ", " + model.detail

    Rectangle {
        id: bar

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: 12 }
        width: 5
        radius: 2.5
        color: root.model.color || Appearance.colors.accent
    }

    Column {
        id: texts

        anchors { left: bar.right; right: parent.right; top: parent.top; margins: 12 }
        spacing: 3

        Text {
            width: parent.width
            text: root.model.title
            textFormat: Text.PlainText
            color: Appearance.colors.label
            font { pixelSize: Math.round(14 * Appearance.textScale); weight: Font.DemiBold }
            horizontalAlignment: Text.AlignLeft
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            text: root.model.detail
            textFormat: Text.PlainText
            color: Appearance.colors.secondaryLabel
            font.pixelSize: Math.round(12 * Appearance.textScale)
            horizontalAlignment: Text.AlignLeft
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
