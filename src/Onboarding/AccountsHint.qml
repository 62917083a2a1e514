import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// Where accounts with calendars are added: a sentence that is a link as a whole, its destination marked.
T.AbstractButton {
    id: root

    readonly property string destination: qsTr("Internet Accounts")
    readonly property string sentence:
        qsTr("Using Google or Outlook? Add the account in %1 and its calendars show up here.")

    text: sentence.arg(destination)
    implicitHeight: implicitContentHeight
    focusPolicy: Qt.StrongFocus

    Accessible.name: text
    Accessible.role: Accessible.Link
    Accessible.onPressAction: clicked()

    FocusRing {
        anchors.margins: -4
        radius: 8
    }
    HoverHandler { cursorShape: Qt.PointingHandCursor }

    contentItem: Label {
        text: root.sentence.arg("<font color=\"" + Appearance.colors.link + "\">" + root.destination + "</font>")
        textFormat: Text.StyledText
        color: Appearance.colors.secondaryLabel
        size: 12
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
