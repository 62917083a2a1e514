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

    contentItem: Box {
        radius: width / 2
        color: Appearance.colors.outline
    }
}
