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

        Label {
            width: parent.width
            text: root.model.title
            size: 14
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
        }
        Label {
            width: parent.width
            text: root.model.detail
            color: Appearance.colors.secondaryLabel
            size: 12
            elide: Text.ElideRight
        }
    }
}
