import QtQuick
import KeloAppearance

// The surface of a floating panel: shadow, translucent card, fine edges. The content fills the card.
Item {
    id: root

    // The panel: margin, cornerRadius, isLiquid, isBlurred; beginDrag() and drag().
    required property QtObject surface
    required property Item content

    anchors.fill: parent
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    // The room for the shadow is the same around every panel. The picture is made for corners of 22 and cut out where
    // the card is, which it would tint: docs/decisions/panel-window.md.
    BorderImage {
        anchors.fill: parent
        visible: root.surface.isLiquid
        source: visible ? "shadow.png" : ""
        border { left: 76; top: 76; right: 76; bottom: 76 }
    }

    // The window's hard edge is the shape's: what it leaves outside of the smooth one has the colour of the hairline.
    Rectangle {
        anchors.fill: card
        visible: !root.surface.isLiquid
        color: Qt.tint(Appearance.colors.panel, Appearance.colors.panelBorder)
    }

    Box {
        id: card

        readonly property color fill: Appearance.colors.panel

        anchors.fill: parent
        anchors.margins: root.surface.margin
        radius: root.surface.cornerRadius
        color: Qt.rgba(fill.r, fill.g, fill.b, root.surface.opacity)
    }

    // Two hairlines: the dark outer one parts the card from a background of its own colour, the light inner one
    // gives it an edge.
    Box {
        anchors.fill: card
        radius: root.surface.cornerRadius
        color: "transparent"
        edge: Appearance.colors.panelBorder
    }
    Box {
        anchors.fill: card
        anchors.margins: 1
        radius: root.surface.cornerRadius - 1
        color: "transparent"
        edge: Appearance.colors.panelHighlight
    }

    DragHandler {
        target: null
        onActiveChanged: if (active) root.surface.beginDrag()
        onTranslationChanged: root.surface.drag()
    }

    ViewHolder {
        anchors.fill: card
        content: root.content
    }
}
