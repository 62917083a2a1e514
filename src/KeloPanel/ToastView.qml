import QtQuick
import KeloThemeViews

// A short message.
Item {
    id: root

    // text
    required property QtObject toast

    objectName: "announcement"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: toast.text

    Label {
        anchors.fill: parent
        anchors.leftMargin: 18
        anchors.rightMargin: 18
        text: root.toast.text
        font.weight: Font.Medium
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        elide: Text.ElideRight
    }
}
