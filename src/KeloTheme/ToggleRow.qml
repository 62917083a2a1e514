import QtQuick

// A row with a switch. A click anywhere on the row switches it.
FormRow {
    id: root

    property alias checked: toggle.checked

    readonly property bool isFocused: toggle.activeFocus

    signal toggled(bool checked)

    function focusControl() {
        toggle.forceActiveFocus()
    }

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: toggle.toggle()
    }

    Toggle {
        id: toggle

        name: root.title
        description: root.footnote
        onToggled: checked => root.toggled(checked)
    }
}
