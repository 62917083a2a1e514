import QtQuick
import KeloAppearance

// The open list of a picker, above the whole window. The chosen text lies over the picker.
FocusScope {
    id: root

    required property Item picker
    // The window's content. Both are given, not bound: a binding would move the list while its window goes.
    required property Item overlay

    readonly property bool isMirrored: picker.LayoutMirroring.enabled
    property int highlighted: Math.max(0, picker.currentIndex)

    anchors.fill: parent
    z: 100
    LayoutMirroring.enabled: isMirrored
    LayoutMirroring.childrenInherit: true

    Component.onCompleted: {
        const corner = picker.mapToItem(overlay, 0, 0)
        const left = isMirrored ? corner.x : corner.x + picker.width - sheet.width
        const top = corner.y - rows.y - highlighted * sheet.rowHeight + (picker.height - sheet.rowHeight) / 2
        sheet.x = Math.max(6, Math.min(overlay.width - sheet.width - 6, left))
        sheet.y = Math.max(6, Math.min(overlay.height - sheet.height - 6, top))
        forceActiveFocus()
    }
    onActiveFocusChanged: if (!activeFocus) picker.close()

    function move(steps) {
        highlighted = Math.max(0, Math.min(picker.texts.length - 1, highlighted + steps))
    }

    function highlightUnder(place) {
        const inRows = mapToItem(rows, place.x, place.y)
        const index = Math.floor(inRows.y / sheet.rowHeight)
        if (inRows.x >= 0 && inRows.x < rows.width && index >= 0 && index < picker.texts.length)
            highlighted = index
    }

    // Only a pointer that moves chooses: the list opens under one that rests, some time after the first keys.
    HoverHandler {
        property point restsAt: Qt.point(-1, -1)

        onPointChanged: {
            const place = point.position
            const moved = restsAt.x >= 0 && (place.x !== restsAt.x || place.y !== restsAt.y)
            restsAt = place
            if (moved)
                root.highlightUnder(place)
        }
    }
    MouseArea {
        anchors.fill: parent
        onPressed: root.picker.close()
        onWheel: wheel => wheel.accepted = true
    }

    BorderImage {
        readonly property int cap: (sourceSize.width - 1) / 2
        readonly property real ratio: Screen.devicePixelRatio

        x: sheet.x - 28
        y: sheet.y - 28
        source: "image://kelo/shadow/9/" + ratio
        width: (sheet.width + 56) * ratio
        height: (sheet.height + 56) * ratio
        scale: 1 / ratio
        transformOrigin: Item.TopLeft
        border { left: cap; top: cap; right: cap; bottom: cap }
    }
    Rectangle {
        id: sheet

        readonly property real rowHeight: Math.round(13 * Appearance.textScale * 2.1)

        width: Math.max(root.picker.width, rows.widest + 10)
        height: rows.implicitHeight + 10
        radius: 9
        color: Appearance.colors.panel
        border { width: 1; color: Appearance.colors.panelBorder }

        Accessible.role: Accessible.PopupMenu
        Accessible.name: root.picker.name

        Column {
            id: rows

            property real widest: 0

            x: 5
            y: 5

            Repeater {
                model: root.picker.texts

                PickerMenuRow {
                    required property int index
                    required property string modelData

                    text: modelData
                    width: sheet.width - 10
                    height: sheet.rowHeight
                    onImplicitWidthChanged: rows.widest = Math.max(rows.widest, implicitWidth)
                    isChosen: index === root.picker.currentIndex
                    isHighlighted: index === root.highlighted
                    onClicked: root.picker.pick(index)
                }
            }
        }
    }

    Keys.onPressed: event => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Down:
            return move(1)
        case Qt.Key_Up:
            return move(-1)
        case Qt.Key_Home:
            return move(-highlighted)
        case Qt.Key_End:
            return move(picker.texts.length)
        case Qt.Key_Space:
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return picker.pick(highlighted)
        default:
            // The list is modal: it closes for Escape and Tab, and takes all other keys.
            if (event.key === Qt.Key_Escape || event.key === Qt.Key_Tab)
                picker.close()
        }
    }
}
