import QtQuick
import QtQuick.Templates as T

// A page of groups that scrolls when it is too long, and to the control that has the keyboard.
Flickable {
    id: root

    default property alias groups: column.data

    contentHeight: column.height
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollMark {}

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: reveal(focused)

    function reveal(item) {
        for (let above = item; above !== column; above = above.parent) {
            if (!above)
                return
        }
        const top = item.mapToItem(column, 0, 0).y - 24
        const bottom = top + item.height + 48
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)))
    }

    Column {
        id: column

        x: 20
        width: root.width - 40
        topPadding: 20
        bottomPadding: 20
        spacing: 20
    }
}
