import QtQuick
import KeloAppearance

// One row of a group of settings: what it is about, a footnote where there is one, and its control.
Item {
    id: root

    property string title
    property string footnote
    property color footnoteColor: Appearance.colors.secondaryLabel
    // Rows after the first are parted from the one above.
    property bool hasSeparator: true
    property alias leading: leadingSlot.data
    default property alias control: slot.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(Math.round(40 * Appearance.textScale), texts.height + 18, slot.height + 12)

    Rectangle {
        visible: root.hasSeparator
        anchors { left: parent.left; right: parent.right; leftMargin: 12; rightMargin: 12 }
        height: 1
        color: Appearance.colors.separator
    }
    Item {
        id: leadingSlot

        anchors { left: parent.left; leftMargin: 12; verticalCenter: parent.verticalCenter }
        width: childrenRect.width
        height: childrenRect.height
    }
    Column {
        id: texts

        anchors { left: leadingSlot.right; leftMargin: leadingSlot.width > 0 ? 9 : 0 }
        anchors { right: slot.left; rightMargin: 14; verticalCenter: parent.verticalCenter }
        spacing: 2

        Label {
            width: parent.width
            text: root.title
            opacity: root.enabled ? 1 : 0.4
            elide: Text.ElideRight
        }
        Footnote {
            visible: text
            width: parent.width
            text: root.footnote
            color: root.footnoteColor
        }
    }
    Item {
        id: slot

        anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
        width: childrenRect.width
        height: childrenRect.height
    }
}
