import QtQuick
import KeloAppearance
import KeloThemeViews

// A message that waits for the user to have read it.
Item {
    id: root

    // message, informativeText, close()
    required property QtObject alert

    Accessible.role: Accessible.AlertMessage
    Accessible.name: alert.message
    Accessible.description: alert.informativeText

    Column {
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
        spacing: 8

        Text {
            width: parent.width
            text: root.alert.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Appearance.colors.label
            font { pixelSize: Math.round(15 * Appearance.textScale); weight: Font.DemiBold }
            Accessible.ignored: true
        }
        Text {
            width: parent.width
            text: root.alert.informativeText
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Appearance.colors.secondaryLabel
            font.pixelSize: Math.round(13 * Appearance.textScale)
            Accessible.ignored: true
        }
    }

    KeloProminentButton {
        anchors { right: parent.right; bottom: parent.bottom; margins: 20 }
        text: qsTr("OK")
        focus: true
        onClicked: root.alert.close()
    }

    Keys.onReturnPressed: alert.close()
    Keys.onEnterPressed: alert.close()
    Keys.onEscapePressed: alert.close()
}
