import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// Two buttons that change a number by one step. It shows nothing of the number itself.
T.SpinBox {
    id: root

    property string name
    // The number in words, for the screen reader.
    property string valueText

    implicitWidth: Math.round(58 * Appearance.textScale)
    implicitHeight: Math.round(13 * Appearance.textScale * 1.95)
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.name: name
    Accessible.description: valueText
    Accessible.readOnly: !enabled
    Accessible.onIncreaseAction: step(1)
    Accessible.onDecreaseAction: step(-1)

    function step(count) {
        for (let i = 0; i < Math.abs(count); ++i)
            count > 0 ? increase() : decrease()
        valueModified()
    }

    component Half: Item {
        id: half

        // The spin box's up or down.
        required property QtObject button
        required property bool canMove
        required property string symbol

        width: root.width / 2
        height: root.height

        Box {
            anchors.fill: parent
            radius: height / 2
            visible: half.canMove && (half.button.hovered || half.button.pressed)
            color: half.button.pressed ? Appearance.colors.controlPressed : Appearance.colors.control
        }
        Symbol {
            anchors.centerIn: parent
            name: half.symbol
            size: 11
            color: Appearance.colors.label
            opacity: half.canMove ? 1 : 0.35
        }
    }

    FocusRing {}

    background: Box {
        radius: height / 2
        color: Appearance.colors.control
        edge: Appearance.colors.controlBorder

        Box {
            anchors.centerIn: parent
            width: 1
            height: parent.height - 10
            color: Appearance.colors.separator
        }
    }
    down.indicator: Half {
        x: root.mirrored ? width : 0
        button: root.down
        canMove: root.value > root.from
        symbol: "minus"
    }
    up.indicator: Half {
        x: root.mirrored ? 0 : width
        button: root.up
        canMove: root.value < root.to
        symbol: "plus"
    }

    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_Plus]: 1, [Qt.Key_Minus]: -1, [Qt.Key_PageUp]: 10, [Qt.Key_PageDown]: -10
        }
        event.accepted = event.key in steps
        if (event.accepted)
            step(steps[event.key])
    }
}
