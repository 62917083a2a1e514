import QtQuick

// What Mivora does, in a sentence and a picture.
Item {
    implicitHeight: column.height

    Column {
        id: column

        anchors.centerIn: parent
        width: parent.width
        spacing: 10

        StepTitle { words: qsTr("Your next meeting, one click away.") }
        StepText {
            words: qsTr("The countdown lives in your menu bar. A minute before, a small panel offers Join, Snooze or Dismiss.")
        }
        Item { width: 1; height: 8 }
        MenuBarMock { anchors.horizontalCenter: parent.horizontalCenter }
    }
}
