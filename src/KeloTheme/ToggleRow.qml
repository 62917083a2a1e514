import QtQuick

// A row with a switch. A click anywhere on the row switches it.
FormRow {
    id: root

    property alias checked: toggle.checked
    // The rows of a list are one stop; the list itself moves the keyboard on.
    property bool isTabStop: true
    // Items that get the keys first.
    property list<Item> keyTargets
    // A function in place of Shift+Tab.
    property var goBack: null

    signal toggled(bool checked)

    function focusControl() {
        toggle.forceActiveFocus()
    }

    TapHandler {
        parent: root
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: {
            toggle.forceActiveFocus(Qt.MouseFocusReason)
            toggle.press()
        }
    }

    Toggle {
        id: toggle

        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        description: root.footnote
        focusPolicy: root.isTabStop ? Qt.StrongFocus : Qt.ClickFocus
        Keys.forwardTo: root.keyTargets
        Keys.onBacktabPressed: event => {
            event.accepted = root.goBack !== null
            if (event.accepted)
                root.goBack()
        }
        onToggled: root.toggled(checked)
    }
}
