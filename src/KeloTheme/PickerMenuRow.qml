import QtQuick
import KeloAppearance

// One text of a picker's open list.
Item {
    id: root

    property string text
    property bool isChosen
    property bool isHighlighted
    readonly property color textColor: isHighlighted ? Appearance.colors.accentLabel : Appearance.colors.label

    signal clicked

    implicitWidth: Math.ceil(label.implicitWidth) + 40

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.focused: isHighlighted
    Accessible.onPressAction: clicked()

    Rectangle {
        anchors.fill: parent
        radius: 6
        visible: root.isHighlighted
        color: Appearance.colors.accent
    }
    Symbol {
        anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
        visible: root.isChosen
        name: "checkmark"
        size: 11
        color: root.textColor
    }
    Text {
        id: label

        anchors { left: parent.left; leftMargin: 26; right: parent.right; rightMargin: 10 }
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        color: root.textColor
        font.pixelSize: Math.round(13 * Appearance.textScale)
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.clicked()
    }
}
