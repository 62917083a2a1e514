import QtQuick
import KeloAppearance

// A switch. It shows `checked` and asks for the other state; who uses it changes `checked`.
Item {
    id: root

    property bool checked
    property string name
    property string description

    signal toggled(bool checked)

    implicitWidth: 38
    implicitHeight: 22
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: description
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.onToggleAction: toggle()
    Accessible.onPressAction: toggle()

    function toggle() {
        toggled(!checked)
    }

    FocusRing {}

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: root.checked ? Appearance.colors.accent : Appearance.colors.controlPressed
        border { width: 1; color: root.checked ? "transparent" : Appearance.colors.controlBorder }

        Behavior on color { ColorAnimation { duration: 120 } }
    }
    Rectangle {
        readonly property bool isAtRight: root.checked !== root.LayoutMirroring.enabled

        x: isAtRight ? root.width - width - 2 : 2
        anchors.verticalCenter: parent.verticalCenter
        width: root.height - 4
        height: width
        radius: width / 2
        color: "white"
        border { width: 1; color: Qt.rgba(0, 0, 0, 0.1) }

        Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutQuad } }
    }

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.toggle()
    }

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            toggle()
    }
}
