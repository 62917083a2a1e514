import QtQuick
import KeloAppearance

// How far work has come; a wandering piece where nobody knows.
Item {
    id: root

    // From 0 to 1, or below 0.
    required property real progress
    readonly property bool isKnown: progress >= 0

    implicitHeight: 6

    Accessible.role: Accessible.ProgressBar
    Accessible.name: isKnown ? Math.round(progress * 100) + " %" : ""

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Appearance.colors.control
        border { width: 1; color: Appearance.colors.controlBorder }
        clip: true

        Rectangle {
            id: bar

            height: parent.height
            width: root.isKnown ? parent.width * root.progress : parent.width / 4
            radius: height / 2
            color: Appearance.colors.accent

            SequentialAnimation on x {
                running: root.visible && !root.isKnown
                loops: Animation.Infinite
                onStopped: bar.x = 0

                NumberAnimation { from: 0; to: root.width * 3 / 4; duration: 900; easing.type: Easing.InOutQuad }
                NumberAnimation { from: root.width * 3 / 4; to: 0; duration: 900; easing.type: Easing.InOutQuad }
            }
        }
    }
}
