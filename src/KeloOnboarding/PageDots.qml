import QtQuick
import KeloAppearance

// A dot for each page; the current one is accented.
Row {
    id: root

    required property int count
    required property int current

    spacing: 8

    Accessible.role: Accessible.Indicator
    Accessible.name: qsTr("Step %1 of %2").arg(current + 1).arg(count)

    Repeater {
        model: root.count

        Box {
            required property int index

            width: 7
            height: 7
            radius: 3.5
            color: index === root.current ? Appearance.colors.mark : Appearance.colors.secondaryLabel
            opacity: index === root.current ? 1 : 0.3

            Behavior on color { ColorAnimation { duration: 250 * Appearance.motion } }
            Behavior on opacity { NumberAnimation { duration: 250 * Appearance.motion } }
        }
    }
}
