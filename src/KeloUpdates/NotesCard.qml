import QtQuick
import QtQuick.Templates as T
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
        contentHeight: notes.height
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollMark {}

        Label {
            id: notes

            width: flickable.width - 10
            text: root.text
            wrapMode: Text.Wrap
        }
    }
    FocusRing { radius: root.radius + 3 }

    function scroll(distance: real) {
        const end = Math.max(0, flickable.contentHeight - flickable.height)
        flickable.contentY = Math.max(0, Math.min(end, flickable.contentY + distance))
    }

    Keys.onPressed: event => {
        const distance = { [Qt.Key_Down]: 30, [Qt.Key_Up]: -30, [Qt.Key_PageDown]: flickable.height,
                           [Qt.Key_PageUp]: -flickable.height }[event.key]
        if (distance === undefined)
            return
        scroll(distance)
        event.accepted = true
    }
}
