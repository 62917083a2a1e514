import QtQuick
import KeloAppearance
import KeloThemeViews

// One key as it looks on a keyboard.
Rectangle {
    id: root

    property string text

    readonly property color primary: Appearance.colors.label

    implicitWidth: Math.max(24, Math.ceil(label.implicitWidth) + 12)
    implicitHeight: Math.max(22, Math.ceil(label.implicitHeight))
    radius: 5
    color: Qt.rgba(primary.r, primary.g, primary.b, 0.07)
    border { width: 0.5; color: Qt.rgba(primary.r, primary.g, primary.b, 0.13) }

    Label {
        id: label

        anchors.centerIn: parent
        text: root.text
        size: 12
        font.weight: Font.Medium
    }
}
