import QtQuick
import KeloAppearance
import KeloThemeViews

// One page of an update: what is going on, the notes of a new version, what can be done.
Item {
    id: root

    // symbol, heading, text, notes, isWorking, progress, primaryLabel, secondaryLabel, pressPrimary(), pressSecondary(),
    // dismiss()
    required property QtObject updates

    readonly property var frame: Window.window
    // Between the margins: the notes, of which some lines can be seen, or the track.
    readonly property real middleHeight: updates.notes ? 140 : updates.isWorking ? 6 : 0
    readonly property real neededHeight: 20 + head.height + 16 + middleHeight + 16 + buttons.height + 20

    // Long texts and large fonts make the window higher; it doesn't shrink under the user's hands.
    function grow() {
        if (frame && frame.height < neededHeight)
            frame.height = Math.ceil(neededHeight)
    }

    onNeededHeightChanged: grow()
    onFrameChanged: grow()

    Accessible.role: Accessible.Dialog
    Accessible.name: updates.heading
    Accessible.description: updates.text

    Row {
        id: head

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
        spacing: 12

        Symbol {
            id: symbol

            visible: root.updates.symbol
            name: root.updates.symbol
            size: 28
            color: root.updates.symbol === "checkmark.circle.fill" ? Appearance.colors.green : Appearance.colors.orange
            Accessible.ignored: true
        }
        Column {
            width: parent.width - (symbol.visible ? symbol.width + parent.spacing : 0)
            spacing: 6

            Text {
                width: parent.width
                text: root.updates.heading
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Appearance.colors.label
                font { pixelSize: Math.round(15 * Appearance.textScale); weight: Font.DemiBold }
                Accessible.ignored: true
            }
            Text {
                width: parent.width
                visible: text
                text: root.updates.text
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Appearance.colors.secondaryLabel
                font.pixelSize: Math.round(13 * Appearance.textScale)
                Accessible.ignored: true
            }
        }
    }

    ProgressTrack {
        anchors { left: parent.left; right: parent.right; top: head.bottom; margins: 20; topMargin: 16 }
        visible: root.updates.isWorking
        progress: root.updates.progress
    }

    NotesCard {
        anchors { left: parent.left; right: parent.right; top: head.bottom; bottom: buttons.top; margins: 20; topMargin: 16; bottomMargin: 16 }
        visible: root.updates.notes
        text: root.updates.notes
    }

    Row {
        id: buttons

        anchors { right: parent.right; bottom: parent.bottom; margins: 20 }
        spacing: 10

        KeloButton {
            visible: text
            focus: visible && !primary.visible
            text: root.updates.secondaryLabel
            onClicked: root.updates.pressSecondary()
        }
        KeloProminentButton {
            id: primary

            visible: text
            focus: visible
            text: root.updates.primaryLabel
            onClicked: root.updates.pressPrimary()
        }
    }

    Keys.onReturnPressed: updates.pressPrimary()
    Keys.onEnterPressed: updates.pressPrimary()
    Keys.onEscapePressed: updates.dismiss()
}
