import QtQuick
import KeloAppearance

// Two buttons that change a number by one step; held down, they go on. It shows nothing of the number itself
// and asks for a new one; who uses it changes `value`.
Item {
    id: root

    property string name
    property int value
    property int minimumValue
    property int maximumValue: 100
    property int stepSize: 1
    // The number in words, for the screen reader.
    property string valueText

    signal moved(int value)

    implicitWidth: 58
    implicitHeight: 24
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.SpinBox
    Accessible.name: name
    Accessible.description: valueText
    Accessible.focusable: enabled
    Accessible.readOnly: !enabled
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function step(count) {
        const wanted = Math.max(minimumValue, Math.min(maximumValue, value + count * stepSize))
        if (enabled && wanted !== value)
            moved(wanted)
    }

    component Half: Item {
        id: half

        required property int direction
        required property string symbol
        readonly property bool canMove: direction > 0 ? root.value < root.maximumValue
                                                      : root.value > root.minimumValue

        width: root.width / 2
        height: root.height

        Rectangle {
            anchors.fill: parent
            radius: height / 2
            visible: half.canMove && (hover.hovered || tap.pressed)
            color: tap.pressed ? Appearance.colors.controlPressed : Appearance.colors.control
        }
        Symbol {
            anchors.centerIn: parent
            name: half.symbol
            size: 11
            color: Appearance.colors.label
            opacity: half.canMove ? 1 : 0.35
        }
        HoverHandler { id: hover }
        TapHandler {
            id: tap

            gesturePolicy: TapHandler.ReleaseWithinBounds
            onPressedChanged: if (pressed) root.step(half.direction)
        }
        Timer {
            property bool isFirst: true

            running: tap.pressed
            repeat: true
            interval: isFirst ? 400 : 70
            onRunningChanged: isFirst = true
            onTriggered: {
                isFirst = false
                root.step(half.direction)
            }
        }
    }

    FocusRing {}

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Appearance.colors.control
        border { width: 1; color: Appearance.colors.controlBorder }
    }
    Row {
        Half { direction: -1; symbol: "minus" }
        Half { direction: 1; symbol: "plus" }
    }
    Rectangle {
        anchors.centerIn: parent
        width: 1
        height: parent.height - 10
        color: Appearance.colors.separator
    }

    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_Up]: 1, [Qt.Key_Down]: -1, [Qt.Key_Plus]: 1, [Qt.Key_Minus]: -1,
            [Qt.Key_PageUp]: 10, [Qt.Key_PageDown]: -10
        }
        event.accepted = event.key in steps
        if (event.accepted)
            step(steps[event.key])
    }
}
