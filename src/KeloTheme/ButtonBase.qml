import QtQuick
import KeloAppearance

// What all push buttons share: label and symbol, pointer, keyboard and screen reader. The kinds give the colours.
Item {
    id: root

    property string text
    property string symbol
    property real fontSize: 13
    property int fontWeight: Font.Medium
    // Fills the width of its text unless a width is given.
    property real horizontalPadding: 14

    required property color face
    required property color faceHovered
    required property color facePressed
    required property color labelColor
    property color edge: "transparent"

    readonly property bool isPressed: tap.pressed || keyDown
    property bool keyDown: false

    signal clicked

    implicitWidth: Math.ceil(row.width) + 2 * horizontalPadding
    implicitHeight: Math.round(fontSize * Appearance.textScale * 2.6)
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: root.isPressed ? root.facePressed : hover.hovered ? root.faceHovered : root.face
        border { width: 1; color: root.edge }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -3
        visible: root.activeFocus
        radius: height / 2
        color: "transparent"
        border { width: 2; color: Appearance.colors.focusRing }
    }

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
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            textFormat: Text.PlainText
            color: root.labelColor
            font { pixelSize: Math.round(root.fontSize * Appearance.textScale); weight: root.fontWeight }
            Accessible.ignored: true
        }
    }

    HoverHandler { id: hover }
    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.clicked()
    }

    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Space)
            return
        keyDown = true
        event.accepted = true
    }
    Keys.onReleased: event => {
        if (event.key !== Qt.Key_Space || !keyDown || event.isAutoRepeat)
            return
        keyDown = false
        event.accepted = true
        clicked()
    }
    onActiveFocusChanged: keyDown = false
}
