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
            frame.height = Math.ceil(neededHeight)
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

            Text {
                width: parent.width
                text: root.page.heading
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Appearance.colors.label
                font { pixelSize: Math.round(15 * Appearance.textScale); weight: Font.DemiBold }
                Accessible.ignored: true
            }
            Text {
                width: parent.width
                visible: text
                text: root.page.text
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                color: Appearance.colors.secondaryLabel
                font.pixelSize: Math.round(13 * Appearance.textScale)
                Accessible.ignored: true
            }
        }
    }

    // A piece that wanders, for work without a known end.
    KeloCard {
        id: track

        anchors { left: parent.left; right: parent.right; top: head.bottom; margins: 20; topMargin: 16 }
        height: 6
        radius: 3
        clip: true
        visible: root.page.isWorking
        Accessible.role: Accessible.ProgressBar

        Rectangle {
            height: parent.height
            width: parent.width / 4
            radius: parent.radius
            color: Appearance.colors.accent

            SequentialAnimation on x {
                running: track.visible
                loops: Animation.Infinite

                NumberAnimation { from: 0; to: track.width * 3 / 4; duration: 900; easing.type: Easing.InOutQuad }
                NumberAnimation { from: track.width * 3 / 4; to: 0; duration: 900; easing.type: Easing.InOutQuad }
            }
        }
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
