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
                visible: !root.model.isNothing

                FormRow {
                    hasSeparator: false
                    title: qsTr("Calendar access")
                    footnote: root.model.canAsk
                              ? qsTr("Mivora can't read your calendars until you allow it.")
                              : root.model.ways.hasPrivacy
                                ? qsTr("Mivora can't read your calendars until you allow it under Privacy & Security → Calendars.")
                                : qsTr("Mivora can't read your calendars: this system does not allow it.")

                    KeloButton {
                        visible: root.model.canAsk || root.model.ways.hasPrivacy
                        text: root.model.canAsk ? qsTr("Allow Calendar Access") : qsTr("Open System Settings…")
                        fontSize: 12
                        onClicked: root.model.canAsk ? root.model.requestAccess() : root.model.ways.openPrivacy()
                    }
                }
            }
            FormGroup {
                visible: root.model.isNothing
                title: qsTr("No calendar found")
                footnote: qsTr("Mivora may read your calendars, but there is none yet. These are the ways to one:")

                Repeater {
                    model: root.model.isNothing ? root.model.ways.all : []

                    FormRow {
                        required property int index
                        required property var modelData

                        hasSeparator: index > 0
                        title: modelData.title
                        footnote: modelData.text

                        KeloButton {
                            visible: text
                            text: modelData.button
                            fontSize: 12
                            onClicked: root.model.ways.follow(index)
                        }
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
