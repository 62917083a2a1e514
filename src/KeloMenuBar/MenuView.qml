import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// The menu of a status item: as a popup, or in an ordinary window.
Rectangle {
    id: root

    // items: title, shortcut, isEnabled, isStop, isSeparator of each; current; choose(index).
    required property QtObject menu
    property bool isPopup: true

    readonly property var colors: Appearance.colors

    color: isPopup ? colors.panel : "transparent"
    border { width: isPopup ? 1 : 0; color: Qt.tint(colors.panel, colors.separator) }
    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true

    Accessible.role: Accessible.PopupMenu

    ListView {
        id: list

        anchors { fill: parent; margins: 5 }
        model: root.menu.items
        currentIndex: root.menu.current
        highlightMoveDuration: 0
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        T.ScrollBar.vertical: ScrollMark {}

        delegate: T.MenuItem {
            id: row

            required property int index
            required property var modelData

            readonly property bool isRead: highlighted && Window.active
            readonly property color textColor: highlighted ? root.colors.accentLabel : root.colors.label

            width: list.width
            height: modelData.isSeparator ? 9 : 26
            leftPadding: 12
            rightPadding: 12
            enabled: modelData.isStop
            highlighted: ListView.isCurrentItem
            text: modelData.title
            // Screen readers follow the keyboard.
            onIsReadChanged: if (isRead) forceActiveFocus()
            onHoveredChanged: {
                if (hovered)
                    root.menu.current = enabled ? index : -1
                else if (root.menu.current === index)
                    root.menu.current = -1
            }
            onClicked: root.menu.choose(index)

            Accessible.ignored: modelData.isSeparator
            Accessible.name: text
            Accessible.description: modelData.shortcut

            background: Box {
                radius: 4
                color: row.highlighted ? root.colors.accent : "transparent"

                Box {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: row.modelData.isSeparator
                    width: parent.width
                    height: 1
                    color: root.colors.separator
                }
            }
            contentItem: Item {
                Text {
                    id: shortcut

                    anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                    text: row.modelData.shortcut
                    textFormat: Text.PlainText
                    color: row.textColor
                    opacity: 0.6
                    Accessible.ignored: true
                }
                Text {
                    anchors { left: parent.left; right: shortcut.left; top: parent.top; bottom: parent.bottom }
                    anchors.rightMargin: shortcut.text ? 32 : 0
                    text: row.text
                    textFormat: Text.PlainText
                    color: row.textColor
                    opacity: row.modelData.isEnabled ? 1 : 0.5
                    horizontalAlignment: Text.AlignLeft
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideRight
                    // Marks piled up on a character reach beyond its line.
                    clip: true
                    Accessible.ignored: true
                }
            }
        }
    }
}
