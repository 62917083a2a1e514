import QtQuick
import KeloAppearance
import KeloThemeViews

// One page of an update: what is going on, the notes of a new version, what can be done.
Item {
    id: root

    // page, pressPrimary(), pressSecondary(), dismiss()
    required property QtObject updates

    readonly property var page: updates.page
    readonly property var frame: Window.window
    // Between the margins: the notes, of which some lines can be seen, or the track.
    readonly property real middleHeight: page.notes ? 180 : page.isWorking ? 6 : 0
    readonly property real neededHeight: 20 + head.height + 16 + middleHeight + 16 + buttons.height + 20

    // Notes, long texts and large fonts make the window higher; it doesn't shrink under the user's hands.
    function grow() {
        if (frame && frame.height < neededHeight)
            frame.height = Math.min(Math.ceil(neededHeight), Screen.desktopAvailableHeight - 56)
    }

    function accept() {
        updates.pressPrimary()
    }
    function cancel() {
        updates.dismiss()
    }

    onNeededHeightChanged: grow()
    onFrameChanged: grow()

    Accessible.role: Accessible.Dialog
    Accessible.name: page.heading
    Accessible.description: page.text

    Row {
        id: head

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
        spacing: 12

        Symbol {
            id: symbol

            visible: root.page.symbol
            name: root.page.symbol
            size: 28
            color: root.page.symbol === "checkmark.circle.fill" ? Appearance.colors.green : Appearance.colors.orange
            Accessible.ignored: true
        }
        Column {
            width: parent.width - (symbol.visible ? symbol.width + parent.spacing : 0)
            spacing: 6

            Label {
                width: parent.width
                text: root.page.heading
                wrapMode: Text.Wrap
                size: 15
                font.weight: Font.DemiBold
            }
            Label {
                width: parent.width
                visible: text
                text: root.page.text
                wrapMode: Text.Wrap
                color: Appearance.colors.secondaryLabel
            }
        }
    }

    BusyTrack {
        anchors { left: parent.left; right: parent.right; top: head.bottom; margins: 20; topMargin: 16 }
        visible: root.page.isWorking
    }

    NotesCard {
        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: buttons.top; margins: 20; topMargin: 16; bottomMargin: 16 }
        visible: root.page.notes
        text: root.page.notes
    }

    Row {
        id: buttons

        anchors { right: parent.right; bottom: parent.bottom; margins: 20 }
        spacing: 10

        KeloButton {
            visible: text
            focus: visible && !primary.visible
            text: root.page.secondaryLabel
            onClicked: root.updates.pressSecondary()
        }
        KeloProminentButton {
            id: primary

            visible: text
            focus: visible
            text: root.page.primaryLabel
            onClicked: root.updates.pressPrimary()
        }
    }
}
