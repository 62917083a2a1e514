import QtQuick
import QtQuick.Templates as T

// Scrolls what is too high for it, and to the control that has the keyboard.
Flickable {
    id: root

    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollMark {}

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: reveal(focused)
    Keys.onPressed: event => scroll(event)

    // By the arrow and page keys, while there is more than is seen.
    function scroll(event) {
        const page = height - 40
        const step = { [Qt.Key_Up]: -40, [Qt.Key_Down]: 40, [Qt.Key_PageUp]: -page, [Qt.Key_PageDown]: page }[event.key]
        event.accepted = step !== undefined && contentHeight > height
        if (event.accepted)
            contentY = Math.max(0, Math.min(contentY + step, contentHeight - height))
    }

    function reveal(item) {
        for (let above = item; above !== contentItem; above = above.parent) {
            if (!above)
                return
        }
        const top = item.mapToItem(contentItem, 0, 0).y - 24
        const bottom = top + item.height + 48
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)))
    }
}
