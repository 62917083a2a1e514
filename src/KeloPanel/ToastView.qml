import QtQuick
import KeloAppearance

// A short message in one line.
Item {
    id: root

    // text
    required property QtObject toast

    objectName: "announcement"
    Accessible.role: Accessible.AlertMessage
    Accessible.name: toast.text

    Text {
        anchors.fill: parent
        anchors.leftMargin: 18
        anchors.rightMargin: 18
        text: root.toast.text
        textFormat: Text.PlainText
        color: Appearance.colors.label
        font { pixelSize: 13; weight: Font.Medium }
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
