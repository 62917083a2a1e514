import QtQuick
import KeloAppearance
import KeloThemeViews

// The steps' views side by side; the one on show moves in as the one before moves out. Only views that can be
// seen exist.
FocusScope {
    id: root

    required property QtObject model

    // The index of the step on show; on the way from one to the next, in between.
    property real position: 0
    readonly property real distance: LayoutMirroring.enabled ? -width / 3 : width / 3

    NumberAnimation {
        id: motion

        target: root
        property: "position"
        duration: root.model.motionLength * Appearance.motion
        easing: root.model.motion
    }

    Connections {
        target: root.model

        function onIndexChanged() {
            motion.to = root.model.index
            motion.restart()
        }
        function onPagesChanged() { root.place() }
    }
    Component.onCompleted: place()

    // A key that no control took.
    function scroll(event) {
        pages.itemAt(model.index).scroll(event)
    }

    // Other steps: there is no way from the old ones to these.
    function place() {
        motion.stop()
        pages.model = []
        position = model.index
        pages.model = model.pages
    }

    Repeater {
        id: pages

        Scroller {
            id: page

            required property int index
            required property var modelData
            readonly property real offset: index - root.position
            // The spring runs a little past its end; that is not yet the next step.
            readonly property bool isSeen: index === root.model.index || Math.abs(offset) < 0.98

            x: offset * root.distance
            width: root.width
            height: root.height
            opacity: 1 - Math.abs(offset)
            visible: isSeen
            // Where there is too little room for all of it.
            contentHeight: Math.max(height, loader.item ? loader.item.implicitHeight : 0)
            interactive: contentHeight > height
            clip: interactive
            onIsSeenChanged: show()
            Component.onCompleted: show()

            function show() {
                if (isSeen)
                    loader.setSource(modelData.source, modelData.model ? { model: modelData.model } : {})
                else
                    loader.source = ""
            }

            Loader {
                id: loader

                // The scroll mark stands beside it.
                x: 12
                width: page.width - 2 * x
                height: page.contentHeight
            }
        }
    }
}
