import QtQuick
import KeloAppearance
import KeloThemeViews

// A keyboard shortcut, large, to be shown in a step.
Box {
    id: root

    required property string text

    implicitWidth: Math.ceil(label.implicitWidth) + 32
    implicitHeight: Math.ceil(label.implicitHeight) + 16
    radius: 10
    color: Qt.rgba(label.color.r, label.color.g, label.color.b, 0.08)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Label {
        id: label

        anchors.centerIn: parent
        text: root.text
        size: 22
        font.weight: Font.DemiBold
    }
}
