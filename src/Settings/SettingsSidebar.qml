import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// The list of pages.
Rectangle {
    id: root

    // pages, pageIndex; selectRow().
    required property QtObject router

    width: Math.min(220 * Math.max(1, Appearance.textScale), parent.width * 0.4)
    color: Appearance.colors.sidebarBackground
    activeFocusOnTab: true

    Accessible.role: Accessible.List
    Accessible.name: qsTr("Settings")
    Accessible.focusable: true

    Box {
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

            T.ItemDelegate {
                id: row

                required property int index
                required property var modelData

                width: parent.width
                implicitHeight: Math.round(32 * Appearance.textScale)
                focusPolicy: Qt.NoFocus
                text: modelData.title
                highlighted: index === root.router.pageIndex
                onClicked: {
                    root.forceActiveFocus(Qt.MouseFocusReason)
                    root.router.selectRow(index)
                }

                Accessible.name: text
                Accessible.selectable: true
                Accessible.selected: highlighted
                Accessible.onPressAction: clicked()

                FocusRing {
                    anchors.margins: 0
                    radius: 8
                    visible: root.activeFocus && Appearance.usesKeyboard && row.highlighted
                }

                background: Box {
                    radius: 8
                    color: row.highlighted ? Appearance.colors.controlHovered
                                           : row.hovered ? Appearance.colors.cardFill : "transparent"
                }
                contentItem: Item {
                    // The page's symbol on a small tile.
                    Box {
                        id: tile

                        readonly property color primary: Appearance.colors.label

                        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                        width: 20
                        height: 20
                        radius: 5.2
                        color: Qt.rgba(primary.r, primary.g, primary.b, 0.08)

                        Symbol {
                            anchors.centerIn: parent
                            name: row.modelData.symbol
                            size: 13
                            color: Appearance.colors[row.modelData.tint]
                        }
                    }
                    Label {
                        anchors { left: tile.right; leftMargin: 8; right: parent.right; rightMargin: 8 }
                        anchors.verticalCenter: parent.verticalCenter
                        text: row.text
                        elide: Text.ElideRight
                    }
                }
            }
        }
    }

    Keys.onPressed: event => {
        const rows = { [Qt.Key_Up]: -1, [Qt.Key_Down]: 1 }
        event.accepted = event.key in rows
        if (!event.accepted)
            return
        router.selectRow(Math.max(0, Math.min(router.pages.length - 1, router.pageIndex + rows[event.key])))
    }
}
