import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// Shows how far a view is scrolled, and scrolls it when dragged: the view's `T.ScrollBar.vertical`.
T.ScrollBar {
    id: root

    implicitWidth: 12
    padding: 3
    visible: size < 1
    minimumSize: 28 / height

    contentItem: Rectangle {
        radius: width / 2
        color: Appearance.colors.tertiaryLabel
        opacity: root.pressed || root.hovered ? 1 : root.active ? 0.8 : 0.5

        Behavior on opacity { NumberAnimation { duration: 150 } }
    }
}
