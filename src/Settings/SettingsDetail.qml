import QtQuick

// The selected page; it is built each time that it is selected.
Item {
    id: root

    required property QtObject router
    required property QtObject general
    required property QtObject calendars

    Loader {
        anchors.fill: parent
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
