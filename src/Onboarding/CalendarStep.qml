import QtQuick
import KeloAppearance
import KeloThemeViews

// Access to the calendars: asked for, given or withheld.
Item {
    id: root

    // The properties of CalendarStepModel.
    required property QtObject model

    // Large text and the longest state leave no room for the picture.
    implicitHeight: texts.height
    readonly property bool hasRoom: height >= texts.height + picture.height + 10

    Symbol {
        id: picture

        anchors { horizontalCenter: parent.horizontalCenter; bottom: texts.top; bottomMargin: 10 }
        visible: root.hasRoom
        name: root.model.isGranted ? "checkmark.circle.fill" : "calendar"
        color: root.model.isGranted ? Appearance.colors.green : Appearance.colors.link
        size: 44
    }

    Column {
        id: texts

        anchors.centerIn: parent
        anchors.verticalCenterOffset: root.hasRoom ? 27 : 0
        width: parent.width
        spacing: 8

        StepTitle { words: root.model.isNothing ? qsTr("No calendar found") : qsTr("Let Mivora read your calendar") }
        StepText {
            words: root.model.isNothing
                   ? qsTr("Mivora may read your calendars, but there is none yet. These are the ways to one:")
                   : qsTr("Mivora needs Full Access to see your meetings and their Join links. It reads them on this Mac and never stores or uploads anything.")
        }

        Item { width: 1; height: 1 }

        KeloButton {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.model.canAsk
            text: qsTr("Allow Calendar Access")
            onClicked: root.model.requestAccess()
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.model.isGranted
            height: Math.round(31 * Appearance.textScale)
            spacing: 6
            Accessible.role: Accessible.StaticText
            Accessible.name: granted.text

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: "checkmark.circle.fill"
                color: Appearance.colors.green
                size: 17
            }
            Label {
                id: granted

                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Access granted")
                color: Appearance.colors.green
                font.weight: Font.Medium
            }
        }

        Repeater {
            // The last way has nothing to open.
            model: root.model.isNothing ? root.model.ways.all.slice(0, -1) : []

            KeloButton {
                required property int index
                required property var modelData

                anchors.horizontalCenter: parent.horizontalCenter
                text: modelData.button
                fontSize: 12
                onClicked: root.model.ways.follow(index)
            }
        }
        StepText {
            visible: root.model.isDenied && !root.model.ways.hasPrivacy
            words: qsTr("Mivora can't read your calendars: this system does not allow it.")
        }
        Column {
            width: parent.width
            visible: root.model.isDenied && root.model.ways.hasPrivacy
            spacing: 6

            KeloButton {
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Open System Settings")
                onClicked: root.model.ways.openPrivacy()
            }
            StepText {
                maximumWidth: 320
                words: qsTr("Turn on Mivora under Privacy & Security → Calendars, then come back here.")
                size: 12
            }
        }

        Item { width: 1; height: 3 }

        AccountsHint {
            visible: root.model.ways.hasAccounts && !root.model.isNothing
            anchors.horizontalCenter: parent.horizontalCenter
            width: Math.min(parent.width, 420 * Math.max(1, Appearance.textScale))
            onClicked: root.model.ways.openAccounts()
        }
        StepText {
            visible: root.model.isNothing || !root.model.ways.hasAccounts
            words: root.model.isNothing
                   ? root.model.ways.all.slice(-1)[0].text
                   : qsTr("Using Google or Outlook? Subscribe to the calendar's private address in Settings.")
            size: 12
        }
    }
}
