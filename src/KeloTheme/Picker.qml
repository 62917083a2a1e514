import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// A button that shows the chosen one of several texts and opens the list of them, the chosen one over the button.
T.ComboBox {
    id: root

    property string name

    readonly property int rowHeight: Math.round(13 * Appearance.textScale * 2.1)

    implicitWidth: Math.ceil(implicitContentWidth) + 40
    implicitHeight: Math.round(13 * Appearance.textScale * 1.95)
    leftPadding: mirrored ? 26 : 12
    rightPadding: mirrored ? 12 : 26
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.name: name
    Accessible.description: displayText
    Accessible.onPressAction: popup.open()

    Keys.onReleased: event => {
        event.accepted = (event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && !popup.visible
        if (event.accepted)
            popup.open()
    }

    FocusRing {}

    background: Box {
        radius: height / 2
        color: root.pressed ? Appearance.colors.controlPressed
                            : root.hovered ? Appearance.colors.controlHovered : Appearance.colors.control
        edge: Appearance.colors.controlBorder
    }
    contentItem: Label {
        text: root.displayText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: Symbol {
        x: root.mirrored ? 8 : root.width - width - 8
        y: (root.height - height) / 2
        name: "chevron.up.chevron.down"
        size: 12
        color: Appearance.colors.secondaryLabel
    }
    delegate: T.ItemDelegate {
        id: row

        required property int index
        required property string modelData

        readonly property bool isChosen: index === root.currentIndex
        readonly property color textColor: highlighted ? Appearance.colors.accentLabel : Appearance.colors.label

        text: modelData
        highlighted: index === root.highlightedIndex
        implicitWidth: Math.ceil(implicitContentWidth) + 40
        width: Math.max(implicitWidth, parent ? parent.width : 0)
        height: root.rowHeight
        leftPadding: mirrored ? 10 : 26
        rightPadding: mirrored ? 26 : 10

        Accessible.name: text
        Accessible.checkable: true
        Accessible.checked: isChosen

        background: Box {
            radius: 6
            color: row.highlighted ? Appearance.colors.accent : "transparent"

            Symbol {
                anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
                visible: row.isChosen
                name: "checkmark"
                size: 11
                color: row.textColor
            }
        }
        contentItem: Label {
            text: row.text
            color: row.textColor
            verticalAlignment: Text.AlignVCenter
        }
    }
    popup: T.Popup {
        x: root.mirrored ? 0 : root.width - width
        y: (root.height - root.rowHeight) / 2 - padding - Math.max(0, root.currentIndex) * root.rowHeight
        width: Math.max(root.width, implicitContentWidth + 2 * padding)
        height: implicitContentHeight + 2 * padding
        margins: 6
        padding: 5
        modal: true
        dim: false

        background: Box {
            radius: 9
            color: Appearance.colors.panel
            edge: Appearance.colors.panelBorder

            BorderImage {
                anchors { fill: parent; margins: -28 }
                z: -1
                source: "shadow-small.png"
                border { left: 63; top: 63; right: 63; bottom: 63 }
            }
        }
        contentItem: Column {
            LayoutMirroring.enabled: root.mirrored
            LayoutMirroring.childrenInherit: true

            Repeater { model: root.delegateModel }
        }
    }
}
