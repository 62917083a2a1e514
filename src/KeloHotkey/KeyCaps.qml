import QtQuick
import KeloAppearance
import KeloThemeViews

// The keys of a combination as they look on a keyboard. Their order is that of the keyboard, also where text runs
// from right to left.
Row {
    id: root

    property var keys: []

    readonly property color primary: Appearance.colors.label

    spacing: 2
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    Repeater {
        model: root.keys

        Box {
            required property string modelData

            implicitWidth: Math.max(24, Math.ceil(label.implicitWidth) + 12)
            implicitHeight: Math.max(22, Math.ceil(label.implicitHeight))
            radius: 5
            color: Qt.rgba(root.primary.r, root.primary.g, root.primary.b, 0.07)
            edge: Qt.rgba(root.primary.r, root.primary.g, root.primary.b, 0.13)
            edgeWidth: 0.5

            Label {
                id: label

                anchors.centerIn: parent
                text: parent.modelData
                size: 12
                font.weight: Font.Medium
            }
        }
    }
}
