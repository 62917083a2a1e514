import QtQuick
import KeloAppearance
import KeloThemeViews

// Which meetings don't count.
FormGroup {
    id: root

    required property QtObject prefs
    // A function in place of Shift+Tab in the first row.
    property alias goBack: first.goBack

    function focusFirst() {
        first.focusControl()
    }
    // The button that was pressed goes, or has nothing more to do.
    function setTitles(titles) {
        field.forceActiveFocus()
        prefs.ignoredTitles = titles
    }
    function addTitle(title) {
        setTitles(prefs.ignoredTitles.filter(known => known !== title).concat(title))
        field.clear()
    }

    title: qsTr("Leave out")

    ToggleRow {
        id: first

        hasSeparator: false
        title: qsTr("Invitations that you haven't accepted")
        footnote: qsTr("Those without your answer, and those that you answered with “maybe”.")
        checked: root.prefs.ignoreUnanswered
        onToggled: checked => root.prefs.ignoreUnanswered = checked
    }
    ToggleRow {
        title: qsTr("Events in which nobody else takes part")
        checked: root.prefs.ignoreWithoutOthers
        onToggled: checked => root.prefs.ignoreWithoutOthers = checked
    }
    FormRow {
        title: qsTr("Meetings with the title")
        footnote: qsTr("* stands for any text, ? for one character.")

        Row {
            spacing: 12

            TextField {
                id: field

                width: root.width - add.width - 36
                name: qsTr("Meetings with the title")
                Accessible.description: qsTr("* stands for any text, ? for one character.")
                onAccepted: text.trim() && root.addTitle(text.trim())
            }
            KeloButton {
                id: add

                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Add")
                fontSize: 12
                enabled: field.text.trim()
                onClicked: root.addTitle(field.text.trim())
            }
        }
    }
    Repeater {
        model: root.prefs.ignoredTitles

        FormRow {
            required property int index
            required property string modelData

            title: modelData

            KeloButton {
                text: qsTr("Remove")
                fontSize: 12
                Accessible.description: parent.parent.title
                onClicked: root.setTitles(root.prefs.ignoredTitles.filter((title, i) => i !== index))
            }
        }
    }
}
