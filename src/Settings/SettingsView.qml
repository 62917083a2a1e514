import QtQuick

// The settings window: the pages on one side, the selected one on the other.
Item {
    id: root

    required property QtObject router
    required property QtObject general
    required property QtObject calendars

    SettingsSidebar {
        id: sidebar

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom }
        router: root.router
        focus: true
    }
    SettingsDetail {
        anchors { left: sidebar.right; right: parent.right; top: parent.top; bottom: parent.bottom }
        router: root.router
        general: root.general
        calendars: root.calendars
    }
}
