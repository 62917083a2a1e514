import QtQuick
import KeloAppearance

// A piece that wanders, for work without a known end.
KeloCard {
    id: root

    height: 6
    radius: 3
    clip: true
    Accessible.role: Accessible.ProgressBar

    Box {
        height: parent.height
        width: Appearance.motion ? parent.width / 4 : parent.width
        radius: parent.radius
        color: Appearance.colors.mark

        SequentialAnimation on x {
            running: root.visible && Appearance.motion > 0
            loops: Animation.Infinite

            NumberAnimation { from: 0; to: root.width * 3 / 4; duration: 900; easing.type: Easing.InOutQuad }
            NumberAnimation { from: root.width * 3 / 4; to: 0; duration: 900; easing.type: Easing.InOutQuad }
        }
    }
}
