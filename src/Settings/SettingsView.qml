import QtQuick

// The settings window: the pages on one side, the selected one on the other.
Item {
    id: root

    required property QtObject router
    required property QtObject general
    required property QtObject calendars

    function cancel() {
        Window.window.close()
    }

    SettingsSidebar {
        id: sidebar

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
        router: root.router
        focus: true
    }
    // The selected page; it is built each time that it is selected.
    Loader {
        anchors { left: sidebar.right; right: parent.right; top: parent.top; bottom: parent.bottom }
        sourceComponent: root.router.pageIndex === 0 ? generalPage : calendarsPage
    }
    Component {
        id: generalPage

        GeneralPage { model: root.general }
    }
    Component {
        id: calendarsPage

        CalendarsPage { model: root.calendars }
    }
}
