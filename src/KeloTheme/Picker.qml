import QtQuick
import KeloAppearance

// A button that shows the chosen one of several texts and opens the list of them. It asks for another choice;
// who uses it changes `currentIndex`.
Item {
    id: root

    property string name
    property var texts: []
    // -1 where the choice is none of the texts.
    property int currentIndex: -1
    property string text: texts[currentIndex] ?? ""
    readonly property bool isOpen: menu.active

    signal picked(int index)

    implicitWidth: Math.ceil(label.implicitWidth) + 40
    implicitHeight: Math.round(13 * Appearance.textScale * 1.95)
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.ComboBox
    Accessible.name: name
    Accessible.description: text
    Accessible.focusable: true
    Accessible.onPressAction: open()

    function open() {
        const overlay = Window.contentItem
        menu.setSource("PickerMenu.qml", { picker: root, overlay: overlay, parent: overlay })
        menu.active = true
    }
    function close() {
        if (!isOpen)
            return
        menu.active = false
        forceActiveFocus()
    }
    function pick(index) {
        close()
        if (index >= 0 && index < texts.length)
            picked(index)
    }

    FocusRing { radius: 10 }

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: tap.pressed ? Appearance.colors.controlPressed
                           : hover.hovered ? Appearance.colors.controlHovered : Appearance.colors.control
        border { width: 1; color: Appearance.colors.controlBorder }
    }
    Text {
        id: label

        anchors { left: parent.left; leftMargin: 10; right: chevrons.left; rightMargin: 6 }
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        color: Appearance.colors.label
        font.pixelSize: Math.round(13 * Appearance.textScale)
        horizontalAlignment: Text.AlignLeft
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Symbol {
        id: chevrons

        anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
        name: "chevron.up.chevron.down"
        size: 12
        color: Appearance.colors.secondaryLabel
    }

    HoverHandler { id: hover }
    TapHandler {
        id: tap

        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: root.open()
    }

    Loader {
        id: menu

        active: false
    }

    onVisibleChanged: if (!visible) menu.active = false

    Keys.onPressed: event => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Space:
        case Qt.Key_Return:
        case Qt.Key_Enter:
            return open()
        case Qt.Key_Down:
            return pick(currentIndex + 1)
        case Qt.Key_Up:
            return pick(currentIndex - 1)
        }
        event.accepted = false
    }
}
