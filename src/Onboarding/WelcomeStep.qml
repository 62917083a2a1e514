import QtQuick

// What Mivora does, in a sentence and a picture.
Item {
    Column {
        anchors.centerIn: parent
        width: parent.width
        spacing: 10

        StepTitle { text: qsTr("Your next meeting, one click away.") }
        StepText {
            text: qsTr("The countdown lives in your menu bar. A minute before, a small panel offers Join, Snooze or Dismiss.")
        }
        Item { width: 1; height: 8 }
        MenuBarMock { anchors.horizontalCenter: parent.horizontalCenter }
    }
}
