import QtQuick
import KeloAppearance
import KeloThemeViews

// The Join panel's content: what starts, when and where, and the three actions.
Item {
    id: root

    // title, timeText, hasStarted, hasLink, serviceName, accentColor; join(), snooze(), dismiss().
    required property QtObject model

    readonly property var colors: Appearance.colors

    objectName: "announcement"
    implicitWidth: 380
    implicitHeight: 150

    Accessible.role: Accessible.AlertMessage
    Accessible.name: model.title + ", " + model.timeText
    Accessible.description: model.serviceName

    function cancel() {
        model.dismiss()
    }

    component InfoText: Label {
        color: root.colors.secondaryLabel
        size: 12
    }

    Row {
        anchors.fill: parent
        anchors.margins: 14
        spacing: 12

        Box {
            width: 5
            height: parent.height
            radius: 2.5
            color: root.model.accentColor || root.colors.mark
        }

        Column {
            width: parent.width - 17
            spacing: 6

            Label {
                width: parent.width
                text: root.model.title
                size: 15
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                // Marks piled up on a character reach beyond its line.
                clip: true
            }

            Row {
                width: parent.width
                spacing: 6

                InfoText {
                    text: root.model.timeText
                    color: root.model.hasStarted ? root.colors.orange : root.colors.secondaryLabel
                    font.weight: root.model.hasStarted ? Font.Medium : Font.Normal
                }
                InfoText {
                    visible: root.model.hasLink
                    text: "·"
                }
                InfoText {
                    visible: root.model.hasLink
                    text: root.model.serviceName
                }
            }

            Row {
                width: parent.width
                spacing: 8

                KeloProminentButton {
                    visible: root.model.hasLink
                    text: qsTr("Join")
                    symbol: "video.fill"
                    fontSize: 12
                    onClicked: root.model.join()
                }
                KeloButton {
                    text: qsTr("Snooze 1 min")
                    fontSize: 12
                    onClicked: root.model.snooze()
                }
                KeloButton {
                    text: qsTr("Dismiss")
                    fontSize: 12
                    onClicked: root.model.dismiss()
                }
            }
        }
    }
}
