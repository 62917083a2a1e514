import QtQuick
import KeloThemeViews

// Which services open in the browser.
FormGroup {
    id: root

    required property QtObject model

    title: qsTr("Open in the browser instead of the app")
    footnote: qsTr("By default Join opens the Zoom or Teams app when it's installed, so there's no browser interstitial.")

    ToggleRow {
        hasSeparator: false
        title: qsTr("Zoom")
        checked: root.model.zoomInBrowser
        onToggled: checked => root.model.zoomInBrowser = checked
    }
    ToggleRow {
        title: qsTr("Microsoft Teams")
        checked: root.model.teamsInBrowser
        onToggled: checked => root.model.teamsInBrowser = checked
    }
}
