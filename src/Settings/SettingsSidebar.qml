import QtQuick
import KeloAppearance
import KeloThemeViews

// The list of pages.
Rectangle {
    id: root

    // pages, pageIndex; selectRow().
    required property QtObject router

    // The list has the keyboard from the start; it shows so only when keys are used.
    property bool isKeyed

    width: 220
    color: Appearance.colors.sidebarBackground
    activeFocusOnTab: true

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Settings")
    Accessible.focusable: true

    // By Tab or a click on the page, not by another window.
    onActiveFocusChanged: if (!activeFocus && Window.active) isKeyed = true

    Rectangle {
        anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        width: 1
        color: Appearance.colors.separator
    }

    Column {
        x: 10
        width: root.width - 20
        topPadding: 4 + 8
        spacing: 2

        Repeater {
            model: root.router.pages

            SettingsSidebarRow {
                required property int index
                required property var modelData

                width: parent.width
                text: modelData.title
                symbol: modelData.symbol
                tint: modelData.tint
                highlighted: index === root.router.pageIndex
                onClicked: root.router.selectRow(index)

                FocusRing {
                    anchors.margins: 0
                    radius: 8
                    visible: root.activeFocus && root.isKeyed && parent.highlighted
                }
            }
        }
    }

    Keys.onPressed: event => {
        const rows = { [Qt.Key_Up]: -1, [Qt.Key_Down]: 1 }
        event.accepted = event.key in rows
        if (!event.accepted)
            return
        isKeyed = true
        router.selectRow(Math.max(0, Math.min(router.pages.length - 1, router.pageIndex + rows[event.key])))
    }
}
