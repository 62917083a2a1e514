import QtQuick
import QtQuick.Templates as T

// Scrolls what is too high for it, and to the control that has the keyboard.
Flickable {
    id: root

    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollMark {}

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: reveal(focused)

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
