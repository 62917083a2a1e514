import QtQuick
import KeloAppearance
import KeloThemeViews

// Shows a combination of keys; a click records another one.
Row {
    id: root

    // recording, keyCaps, displayString, canReset, toolTip, resetToolTip; toggle(), stop(), reset().
    required property QtObject recorder
    property string name
    // What a screen reader says besides the combination.
    property string note

    readonly property bool isOnScreen: visible && Window.visibility > Window.Hidden
                                       && Window.visibility !== Window.Minimized

    spacing: 8
    onIsOnScreenChanged: if (!isOnScreen) recorder.stop()
    Component.onDestruction: recorder.stop()

    component Fading: Behavior { NumberAnimation { duration: 120; easing.type: Easing.OutQuad } }

    Item {
        id: button

        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: root.recorder.recording ? prompt.width : caps.width
        implicitHeight: Math.max(prompt.implicitHeight, caps.height)
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: root.name
        Accessible.description: root.recorder.recording ? prompt.text : root.recorder.displayString + (root.note ? ". " + root.note : "")
        Accessible.focusable: true
        Accessible.onPressAction: root.recorder.toggle()

        FocusRing { radius: 8 }

        KeyCaps {
            id: caps

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            keys: root.recorder.keyCaps
            opacity: root.recorder.recording ? 0 : 1
            Fading on opacity {}
        }
        Text {
            id: prompt

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            leftPadding: 6
            rightPadding: 6
            text: qsTr("Press a shortcut…")
            textFormat: Text.PlainText
            color: Appearance.colors.accent
            font { pixelSize: Math.round(12 * Appearance.textScale); weight: Font.Medium }
            opacity: root.recorder.recording ? 1 : 0
            Accessible.ignored: true
            Fading on opacity {}
        }
        HelpTip { text: root.recorder.toolTip }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.recorder.toggle()
        }
        // On release: the press must be over when recording begins. The release of a recorded key comes here
        // without its press and begins nothing.
        property bool keyDown: false

        function isTrigger(event) {
            return event.key === Qt.Key_Space || event.key === Qt.Key_Return
        }
        onActiveFocusChanged: keyDown = false
        Keys.onPressed: event => {
            event.accepted = isTrigger(event)
            keyDown = keyDown || event.accepted
        }
        Keys.onReleased: event => {
            event.accepted = isTrigger(event) && keyDown
            if (!event.accepted || event.isAutoRepeat)
                return
            keyDown = false
            root.recorder.toggle()
        }
    }

    Item {
        id: resetButton

        anchors.verticalCenter: parent.verticalCenter
        visible: root.recorder.canReset
        width: 22
        height: 22
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: root.recorder.resetToolTip
        Accessible.focusable: true
        Accessible.onPressAction: root.recorder.reset()

        FocusRing {}

        Rectangle {
            anchors.fill: parent
            radius: height / 2
            visible: hover.hovered
            color: Appearance.colors.control
        }
        Symbol {
            anchors.centerIn: parent
            name: "arrow.counterclockwise"
            size: 14
            color: Appearance.colors.secondaryLabel
        }
        HelpTip { text: root.recorder.resetToolTip }
        HoverHandler { id: hover }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: root.recorder.reset()
        }
        Keys.onSpacePressed: {
            // The button goes away, and would take the keyboard's place on the page with it.
            button.forceActiveFocus()
            root.recorder.reset()
        }
    }
}
