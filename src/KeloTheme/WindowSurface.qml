import QtQuick
import KeloAppearance

// The surface of an ordinary window; the content fills it.
Rectangle {
    id: root

    required property Item content

    anchors.fill: parent
    color: Appearance.colors.windowBackground
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    ViewHolder {
        anchors.fill: parent
        content: root.content
    }
}
