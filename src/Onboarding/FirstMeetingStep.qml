import QtQuick
import KeloAppearance

// The end of the walkthrough: the next meeting, and what will happen before it.
Item {
    id: root

    // hasMeeting, title, detail, color.
    required property QtObject model

    Column {
        anchors.centerIn: parent
        width: Math.min(parent.width, 400)
        spacing: 14

        StepTitle {
            text: root.model.hasMeeting ? qsTr("Here's your next meeting") : qsTr("No meetings today")
        }
        StepText {
            visible: !root.model.hasMeeting
            text: qsTr("You're all set. The countdown appears in the menu bar as soon as something is on your calendar.")
        }
        MeetingCard {
            width: parent.width
            visible: root.model.hasMeeting
            model: root.model
        }
        Item { width: 1; height: 2 }
        TipRow {
            width: parent.width
            visible: root.model.hasMeeting
            symbol: "menubar.rectangle"
            text: qsTr("The countdown is in your menu bar from now on.")
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
