import QtQuick
import KeloAppearance
import KeloThemeViews

// A message that waits for the user to have read it.
FocusScope {
    id: root

    focus: true

    // message, informativeText, close()
    required property QtObject alert

    Accessible.role: Accessible.AlertMessage
    Accessible.name: alert.message
    Accessible.description: alert.informativeText

    function accept() {
        alert.close()
    }
    function cancel() {
        alert.close()
    }

    Column {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
        spacing: 8

        Label {
            width: parent.width
            text: root.alert.message
            wrapMode: Text.Wrap
            size: 15
            font.weight: Font.DemiBold
        }
        Label {
            width: parent.width
            text: root.alert.informativeText
            wrapMode: Text.Wrap
            color: Appearance.colors.secondaryLabel
        }
    }

    KeloProminentButton {
        anchors { right: parent.right; bottom: parent.bottom; margins: 20 }
        text: qsTr("OK")
        focus: true
        onClicked: root.alert.close()
    }
}
