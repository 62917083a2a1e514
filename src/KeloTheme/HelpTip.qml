import QtQuick
import KeloAppearance

// Says more about its parent when the pointer rests on it.
Item {
    id: root

    property string text

    HoverHandler {
        parent: root.parent
        onHoveredChanged: if (hovered) delay.restart(); else { delay.stop(); tip.active = false }
    }
    Timer {
        id: delay

        interval: 700
        onTriggered: if (root.text) root.show()
    }

    // Once and not by bindings, which would move the tip while its window goes.
    function show() {
        tip.active = true
        const overlay = Window.contentItem
        const corner = parent.mapToItem(overlay, 0, 0)
        const sheet = tip.item
        const below = corner.y + parent.height + 6
        const middle = corner.x + (parent.width - sheet.width) / 2
        sheet.parent = overlay
        sheet.x = Math.max(6, Math.min(overlay.width - sheet.width - 6, middle))
        sheet.y = below + sheet.height > overlay.height ? corner.y - sheet.height - 6 : below
    }

    Loader {
        id: tip

        active: false
        sourceComponent: Rectangle {
            z: 100
            width: label.implicitWidth + 16
            height: label.implicitHeight + 8
            radius: 6
            color: Appearance.colors.panel
            border { width: 1; color: Appearance.colors.panelBorder }

            Footnote {
                id: label

                anchors.centerIn: parent
                text: root.text
                wrapMode: Text.NoWrap
                color: Appearance.colors.label
                Accessible.ignored: true
            }
        }
    }
}
