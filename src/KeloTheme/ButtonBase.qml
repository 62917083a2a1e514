import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// What all push buttons share. The kinds give the colours.
T.Button {
    id: root

    property string symbol
    property real fontSize: 13
    property int fontWeight: Font.Medium

    required property color face
    required property color faceHovered
    required property color facePressed
    required property color labelColor
    property color edge: "transparent"

    // Fills the width of its text unless a width is given.
    horizontalPadding: 14
    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.round(fontSize * Appearance.textScale * 2.6)
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.name: text
    Accessible.onPressAction: clicked()

    FocusRing {}

    background: Box {
        radius: height / 2
        color: root.pressed ? root.facePressed : root.hovered ? root.faceHovered : root.face
        edge: root.edge
    }
    contentItem: Item {
        implicitWidth: row.width

        Row {
            id: row

            anchors.centerIn: parent
            spacing: Math.round(root.fontSize * 0.45)

            Symbol {
                visible: root.symbol
                anchors.verticalCenter: parent.verticalCenter
                name: root.symbol
                color: root.labelColor
                size: Math.round(root.fontSize * Appearance.textScale * 1.3)
            }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                color: root.labelColor
                size: root.fontSize
                font.weight: root.fontWeight
            }
        }
    }
}
