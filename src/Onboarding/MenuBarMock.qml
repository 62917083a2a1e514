import QtQuick
import KeloAppearance
import KeloThemeViews

// A picture of the countdown and the Join panel, drawn with what they are drawn with. Nothing in it can be used.
Item {
    id: root

    readonly property var colors: Appearance.colors
    readonly property real scaling: Math.max(1, Appearance.textScale)
    readonly property color quiet: Qt.rgba(colors.label.r, colors.label.g, colors.label.b, 0.08)

    width: 300 * scaling
    height: panel.y + panel.height

    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("The countdown in the menu bar, and the Join panel under it")


    Box {
        id: strip

        anchors.horizontalCenter: parent.horizontalCenter
        width: 260 * scaling
        height: Math.round(28 * scaling)
        radius: 8
        color: root.quiet

        Row {
            anchors.centerIn: parent
            spacing: 7

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "calendar.badge.clock"
                color: root.colors.label
                size: 16
            }
            Label {
                text: qsTr("Design review · 2m")
                font.weight: Font.Medium
            }
        }
    }

    Box {
        id: panel

        anchors { top: strip.bottom; topMargin: 10; horizontalCenter: parent.horizontalCenter }
        width: 260 * scaling
        height: content.height + 24
        radius: 14
        color: root.colors.panel
        edge: root.colors.panelBorder

        Box {
            anchors { fill: parent; margins: 1 }
            radius: parent.radius - 1
            color: "transparent"
            edge: root.colors.panelHighlight
        }

        Column {
            id: content

            anchors { left: parent.left; right: parent.right; top: parent.top; margins: 12 }
            spacing: 10

            Row {
                anchors.left: parent.left
                spacing: 11

                Box {
                    width: 44
                    height: 44
                    radius: 11
                    color: "#2d6ff6"

                    Symbol {
                        anchors.centerIn: parent
                        name: "video.fill"
                        color: "white"
                        size: 25
                    }
                }
                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 2

                    Label {
                        anchors.left: parent.left
                        text: qsTr("Design review")
                        font.weight: Font.DemiBold
                    }
                    Label {
                        anchors.left: parent.left
                        text: qsTr("Starts in 2m · Zoom")
                        color: root.colors.secondaryLabel
                        size: 11
                    }
                }
            }
            Row {
                anchors.left: parent.left
                spacing: 8

                KeloProminentButton {
                    text: qsTr("Join")
                    fontSize: 11
                    horizontalPadding: 16
                    focusPolicy: Qt.NoFocus
                    Accessible.ignored: true
                }
                KeloButton {
                    text: qsTr("Snooze 1 min")
                    fontSize: 11
                    face: root.quiet
                    focusPolicy: Qt.NoFocus
                    Accessible.ignored: true
                }
            }
        }
    }

    // Keeps the pointer from the sample buttons.
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
    }
}
