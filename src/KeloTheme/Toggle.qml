import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// A switch. Nothing of its `text` is seen: it is the name for screen readers.
T.Switch {
    id: root

    property string description

    implicitWidth: 38
    implicitHeight: 22
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1 : 0.4

    Accessible.name: text
    Accessible.description: description
    Accessible.focusable: true
    Accessible.onToggleAction: press()
    Accessible.onPressAction: press()

    function press() {
        toggle()
        toggled()
    }

    FocusRing {}

    indicator: Box {
        anchors.fill: parent
        radius: height / 2
        color: root.checked ? Appearance.colors.mark : Appearance.colors.outline

        Behavior on color { ColorAnimation { duration: 120 * Appearance.motion } }

        Box {
            x: 2 + root.visualPosition * (parent.width - width - 4)
            anchors.verticalCenter: parent.verticalCenter
            width: parent.height - 4
            height: width
            radius: width / 2
            color: root.checked ? Appearance.colors.markLabel : "white"
            edge: Qt.rgba(0, 0, 0, 0.1)

            Behavior on x {
                enabled: !root.pressed
                NumberAnimation { duration: 120 * Appearance.motion; easing.type: Easing.OutQuad }
            }
        }
    }
}
