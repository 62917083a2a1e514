import QtQuick

// The keys of a combination. Their order is that of the keyboard, also where text runs from right to left.
Row {
    id: root

    property var keys: []

    spacing: 2
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    Repeater {
        model: root.keys

        KeyCap {
            required property string modelData

            text: modelData
        }
    }
}
