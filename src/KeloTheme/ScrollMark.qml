import QtQuick
import KeloAppearance

// Shows how far `view` is scrolled, and scrolls it when dragged.
Item {
    id: root

    required property Flickable view

    readonly property real part: view.visibleArea.heightRatio

    anchors { right: parent.right; top: parent.top; bottom: parent.bottom; margins: 3 }
    width: 6
    visible: part < 1

    Rectangle {
        id: thumb

        readonly property real travel: root.height - height

        y: Math.max(0, Math.min(travel, root.view.visibleArea.yPosition / (1 - root.part) * travel))
        width: parent.width
        height: Math.max(28, root.part * root.height)
        radius: width / 2
        color: Appearance.colors.tertiaryLabel
        opacity: drag.active || hover.hovered ? 1 : root.view.moving ? 0.8 : 0.5

        Behavior on opacity { NumberAnimation { duration: 150 } }
    }
    HoverHandler { id: hover }
    DragHandler {
        id: drag

        property real grip: 0

        target: null
        xAxis.enabled: false
        onActiveChanged: grip = centroid.pressPosition.y - thumb.y
        onCentroidChanged: {
            if (!active)
                return
            const place = Math.max(0, Math.min(1, (centroid.position.y - grip) / thumb.travel))
            const view = root.view
            view.contentY = view.originY + place * (view.contentHeight - view.height)
        }
    }
}
