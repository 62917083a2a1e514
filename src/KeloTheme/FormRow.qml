import QtQuick
import KeloAppearance

// One row of a group of settings: what it is about, a footnote where there is one, and its controls.
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
    implicitHeight: isStacked ? texts.height + slot.height + 26
                              : Math.max(Math.round(40 * Appearance.textScale), texts.height + 18, slot.height + 12)

    // A wide control goes below the text, unless that is short.
    readonly property bool isStacked: slot.width > Math.max(width * 0.4, width - title.implicitWidth - 38)

    Box {
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
        anchors { right: root.isStacked ? parent.right : slot.left; rightMargin: root.isStacked ? 12 : 14 }
        y: root.isStacked ? 9 : (parent.height - height) / 2
        spacing: 2

        Label {
            id: title

            width: parent.width
            text: root.title
            opacity: root.enabled ? 1 : 0.4
            wrapMode: Text.Wrap
            maximumLineCount: 6
            elide: Text.ElideRight
        }
        Footnote {
            visible: text
            width: parent.width
            text: root.footnote
            color: root.footnoteColor
        }
    }
    // From the end on.
    Row {
        id: slot

        anchors { right: parent.right; rightMargin: 12 }
        y: root.isStacked ? texts.y + texts.height + 8 : (parent.height - height) / 2
        layoutDirection: Qt.RightToLeft
        spacing: 12
    }
}
