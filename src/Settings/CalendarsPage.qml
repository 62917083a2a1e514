import QtQuick
import KeloAppearance
import KeloThemeViews

// Which calendars count, and what opens in the browser.
Loader {
    id: root

    // The properties of CalendarsPageModel.
    required property QtObject model

    sourceComponent: model.hasAccess ? list : explanation

    Component {
        id: explanation

        FormPage {
            FormGroup {
                FormRow {
                    hasSeparator: false
                    title: qsTr("Calendar access")
                    footnote: qsTr("Mivora can't read your calendars until you allow it under Privacy & Security → Calendars.")

                    KeloButton {
                        text: qsTr("Open System Settings…")
                        fontSize: 12
                        onClicked: root.model.openSystemSettings()
                    }
                }
            }
            BrowserSection { model: root.model }
        }
    }
    Component {
        id: list

        CalendarList { model: root.model }
    }
}
