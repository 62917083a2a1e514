// For a bar of Quickshell, beside its other files: Mivora {}. From Quickshell's documentation, untried: Debian has no package of it.
import QtQuick
import Quickshell
import Quickshell.Io

Text {
    id: label

    property var status: ({"title": "", "urgent": false})

    text: status.title
    textFormat: Text.PlainText
    color: status.urgent ? "orange" : "white"

    Process {
        running: true
        command: ["mivora", "agenda", "--json", "--follow"]
        stdout: SplitParser {
            onRead: line => label.status = JSON.parse(line).statusItem
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onClicked: mouse => Quickshell.execDetached(["mivora", mouse.button === Qt.RightButton ? "settings" : "join"])
    }
}
