import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// Shows a combination of keys; a click records another one.
Row {
    id: root

    // recording, keyCaps, text, canReset, toolTip, resetToolTip; toggle(), stop(), reset().
    required property QtObject recorder
    property string name
    // What a screen reader says besides the combination.
    property string note

    readonly property bool isOnScreen: visible && Window.visibility > Window.Hidden
                                       && Window.visibility !== Window.Minimized

    spacing: 8
    onIsOnScreenChanged: if (!isOnScreen) recorder.stop()
    Component.onDestruction: recorder.stop()

    component Fading: Behavior { NumberAnimation { duration: 120 * Appearance.motion; easing.type: Easing.OutQuad } }

    T.AbstractButton {
        id: button

        // The release of a recorded key comes here without its press, and is no click.
        property bool hasPress: false

        anchors.verticalCenter: parent.verticalCenter
        implicitWidth: root.recorder.recording ? prompt.width : caps.width
        implicitHeight: Math.max(prompt.implicitHeight, caps.height)
        focusPolicy: Qt.StrongFocus
        onPressed: hasPress = true
        onClicked: {
            if (hasPress)
                root.recorder.toggle()
            hasPress = false
        }
        Keys.onReturnPressed: root.recorder.toggle()
        Keys.onEnterPressed: root.recorder.toggle()

        Accessible.name: root.name
        Accessible.description: root.recorder.recording ? prompt.text
                                                        : root.recorder.text + (root.note ? ". " + root.note : "")
        Accessible.onPressAction: root.recorder.toggle()

        FocusRing { radius: 8 }

        KeyCaps {
            id: caps

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            keys: root.recorder.keyCaps
            opacity: root.recorder.recording ? 0 : 1
            Fading on opacity {}
        }
        Label {
            id: prompt

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            leftPadding: 6
            rightPadding: 6
            text: qsTr("Press a shortcut…")
            color: Appearance.colors.link
            size: 12
            font.weight: Font.Medium
            opacity: root.recorder.recording ? 1 : 0
            Fading on opacity {}
        }
        HelpTip { text: root.recorder.toolTip }
    }

    T.AbstractButton {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.recorder.canReset
        implicitWidth: 22
        implicitHeight: 22
        focusPolicy: Qt.StrongFocus
        onClicked: {
            // The button goes away, and would take the keyboard's place on the page with it.
            if (activeFocus)
                button.forceActiveFocus()
            root.recorder.reset()
        }
        Accessible.name: root.recorder.resetToolTip
        Accessible.onPressAction: clicked()

        FocusRing {}

        background: Box {
            radius: height / 2
            color: parent.hovered ? Appearance.colors.control : "transparent"
        }
        contentItem: Item {
            Symbol {
                anchors.centerIn: parent
                name: "arrow.counterclockwise"
                size: 14
                color: Appearance.colors.secondaryLabel
            }
        }
        HelpTip { text: root.recorder.resetToolTip }
    }
}
