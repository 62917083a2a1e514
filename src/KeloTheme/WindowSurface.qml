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

    FocusScope {
        id: holder

        anchors.fill: parent
        focus: true
    }

    Component.onCompleted: {
        content.parent = holder
        content.anchors.fill = holder
    }
}
