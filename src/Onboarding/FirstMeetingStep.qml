import QtQuick
import KeloAppearance
import KeloThemeViews

// The end of the walkthrough: the next meeting, and what will happen before it.
Item {
    id: root

    // hasMeeting, title, detail, color, trayHint.
    required property QtObject model

    implicitHeight: column.height

    Column {
        id: column

        anchors.centerIn: parent
        width: Math.min(parent.width, 400 * Math.max(1, Appearance.textScale))
        spacing: 14

        StepTitle {
            words: root.model.hasMeeting ? qsTr("Here's your next meeting") : qsTr("No meetings today")
        }
        StepText {
            visible: !root.model.hasMeeting && !root.model.trayHint
            words: qsTr("You're all set. The countdown appears in the menu bar as soon as something is on your calendar.")
        }
        // The meeting: its calendar's colour, its title, when and where it is.
        KeloCard {
            width: parent.width
            implicitHeight: texts.height + 24
            visible: root.model.hasMeeting

            Accessible.role: Accessible.StaticText
            Accessible.name: root.model.title + ", " + root.model.detail

            Box {
                id: bar

                anchors { left: parent.left; top: parent.top; bottom: parent.bottom; margins: 12 }
                width: 5
                radius: 2.5
                color: root.model.color || Appearance.colors.mark
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
        Item { width: 1; height: 2 }
        TipRow {
            width: parent.width
            visible: root.model.hasMeeting || root.model.trayHint
            symbol: "menubar.rectangle"
            text: root.model.trayHint || qsTr("The countdown is in your menu bar from now on.")
        }
        TipRow {
            width: parent.width
            symbol: "rectangle.topthird.inset.filled"
            text: root.model.hasMeeting
                  ? qsTr("A minute before it starts, the Join panel appears. Change the lead time in Settings.")
                  : qsTr("A minute before each meeting, the Join panel appears. Change the lead time in Settings.")
        }
    }
}
