import QtQuick
import KeloAppearance

// Where accounts with calendars are added: a sentence that is a link as a whole, its destination marked.
Item {
    id: root

    readonly property string destination: qsTr("Internet Accounts")
    readonly property string sentence:
        qsTr("Using Google or Outlook? Add the account in %1 and its calendars show up here.")

    signal clicked

    implicitHeight: label.height
    activeFocusOnTab: true

    Accessible.role: Accessible.Link
    Accessible.name: sentence.arg(destination)
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            clicked()
    }

    Text {
        id: label

        width: parent.width
        text: root.sentence.arg("<font color=\"" + Appearance.colors.link + "\">" + root.destination + "</font>")
        textFormat: Text.StyledText
        color: Appearance.colors.secondaryLabel
        font.pixelSize: Math.round(12 * Appearance.textScale)
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }

    Rectangle {
        anchors { fill: parent; margins: -4 }
        visible: root.activeFocus
        radius: 8
        color: "transparent"
        border { width: 2; color: Appearance.colors.focusRing }
    }

    HoverHandler { cursorShape: Qt.PointingHandCursor }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.clicked()
    }
}
