import QtQuick
import QtQuick.Templates as T

// Holds a window's content, and has the keys that all windows share. A button that has the keyboard takes Return and
// Enter; otherwise they are for the content's function accept(), and Escape for its cancel(), where it has them.
FocusScope {
    id: root

    required property Item content

    focus: true

    Component.onCompleted: {
        content.parent = root
        content.anchors.fill = root
    }

    function press(button) {
        if (button.checkable) {
            button.toggle()
            button.toggled()
        } else {
            button.clicked()
        }
    }

    function accept(event) {
        const item = Window.activeFocusItem
        if (event.isAutoRepeat)
            return
        // A button that has gone by what it did keeps the focus until something else takes it.
        if (item instanceof T.AbstractButton && item.visible)
            press(item)
        else if (content.accept)
            content.accept()
        else
            event.accepted = false
    }

    Keys.onReturnPressed: event => accept(event)
    Keys.onEnterPressed: event => accept(event)
    Keys.onEscapePressed: event => {
        event.accepted = content.cancel !== undefined
        if (event.accepted)
            content.cancel()
    }
    Keys.onPressed: event => {
        event.accepted = event.modifiers === Qt.ControlModifier && (event.key === Qt.Key_W || event.key === Qt.Key_Q)
        if (!event.accepted)
            return
        if (event.key === Qt.Key_Q)
            Qt.quit()
        else if (content.cancel)
            content.cancel()
        else
            Window.window.close()
    }
}
