import QtQuick
import KeloThemeViews

// What stands below the calendars.
Column {
    id: root

    required property QtObject model

    // The keyboard goes back to the calendars.
    signal wentBack

    function focusFirst() {
        browser.focusFirst()
    }

    bottomPadding: 20
    spacing: 20

    Footnote {
        leftPadding: 12
        rightPadding: 12
        width: root.width
        text: qsTr("Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.")
        Accessible.ignored: false
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    BrowserSection {
        id: browser

        model: root.model
        goBack: () => root.wentBack()
    }

    // Not for the list around it, whose rows they would change.
    Keys.onUpPressed: {}
    Keys.onDownPressed: {}
}
