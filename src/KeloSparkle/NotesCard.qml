import QtQuick
import KeloAppearance
import KeloThemeViews

// The notes of a version, as plain text that scrolls.
KeloCard {
    id: root

    required property string text

    activeFocusOnTab: visible
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Flickable {
        id: flickable

        anchors { fill: parent; margins: 12 }
        clip: true
        contentWidth: width
        contentHeight: notes.height
        boundsBehavior: Flickable.StopAtBounds

        Text {
            id: notes

            width: flickable.width - 10
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Appearance.colors.label
            font.pixelSize: Math.round(13 * Appearance.textScale)
        }
    }

    Rectangle {
        anchors { right: parent.right; rightMargin: 5 }
        // From 0 to 1.
        readonly property real way: flickable.contentY / Math.max(1, flickable.contentHeight - flickable.height)

        visible: flickable.visibleArea.heightRatio < 1
        y: 8 + way * (parent.height - 16 - height)
        height: Math.max(24, flickable.visibleArea.heightRatio * (parent.height - 16))
        width: 5
        radius: 2.5
        color: Appearance.colors.tertiaryLabel
    }

    Rectangle {
        anchors.fill: parent
        visible: root.activeFocus
        radius: root.radius
        color: "transparent"
        border { width: 2; color: Appearance.colors.focusRing }
    }

    function scroll(distance: real) {
        const end = Math.max(0, flickable.contentHeight - flickable.height)
        flickable.contentY = Math.max(0, Math.min(end, flickable.contentY + distance))
    }

    Keys.onDownPressed: scroll(30)
    Keys.onUpPressed: scroll(-30)
    Keys.onPressed: event => {
        const pages = { [Qt.Key_PageDown]: 1, [Qt.Key_PageUp]: -1 }[event.key]
        if (pages === undefined)
            return
        scroll(pages * flickable.height)
        event.accepted = true
    }
}
