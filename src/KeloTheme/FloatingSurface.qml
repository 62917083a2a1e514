import QtQuick
import KeloAppearance

// The surface of a floating panel: shadow, translucent card, fine edges. The content fills the card.
Item {
    id: root

    // The panel: margin, cornerRadius, isLiquid, isBlurred; beginDrag() and drag().
    required property QtObject surface
    required property Item content

    readonly property real pixelRatio: Screen.devicePixelRatio

    anchors.fill: parent
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    // Drawn in device pixels, so that the cut-out meets the card's edge exactly.
    BorderImage {
        readonly property int cap: (sourceSize.width - 1) / 2

        visible: root.surface.isLiquid
        source: visible ? "image://kelo/shadow/" + root.surface.cornerRadius + "/" + root.pixelRatio : ""
        width: root.width * root.pixelRatio
        height: root.height * root.pixelRatio
        scale: 1 / root.pixelRatio
        transformOrigin: Item.TopLeft
        border { left: cap; top: cap; right: cap; bottom: cap }
    }

    // The window's hard edge is the shape's: what it leaves outside of the smooth one has the colour of the hairline.
    Rectangle {
        anchors.fill: card
        visible: !root.surface.isLiquid
        color: Qt.tint(Appearance.colors.panel, Appearance.colors.panelBorder)
    }

    Rectangle {
        id: card

        readonly property color fill: Appearance.colors.panel

        anchors.fill: parent
        anchors.margins: root.surface.margin
        radius: root.surface.cornerRadius
        color: Qt.rgba(fill.r, fill.g, fill.b, root.surface.opacity)
    }

    // Two hairlines: the dark outer one parts the card from a background of its own colour, the light inner one
    // gives it an edge.
    Rectangle {
        anchors.fill: card
        radius: root.surface.cornerRadius
        color: "transparent"
        border { width: 1; color: Appearance.colors.panelBorder }
    }
    Rectangle {
        anchors.fill: card
        anchors.margins: 1
        radius: root.surface.cornerRadius - 1
        color: "transparent"
        border { width: 1; color: Appearance.colors.panelHighlight }
    }

    DragHandler {
        target: null
        onActiveChanged: if (active) root.surface.beginDrag()
        onTranslationChanged: root.surface.drag()
    }

    FocusScope {
        id: holder

        anchors.fill: card
        focus: true
    }

    Component.onCompleted: {
        content.parent = holder
        content.anchors.fill = holder
    }
}
