import QtQuick
import KeloAppearance
import KeloHotkeyViews
import KeloThemeViews

// How the menu bar, the Join panel and the shortcut behave.
FormPage {
    id: root

    // The properties of GeneralPageModel.
    required property QtObject model

    Component.onCompleted: model.begin()

    FormGroup {
        title: qsTr("Menu bar")

        ToggleRow {
            hasSeparator: false
            title: qsTr("Show the next meeting in the menu bar")
            footnote: root.model.trayHint || qsTr("Off: only the icon, the menu still lists your meetings.")
            checked: root.model.prefs.showTitle
            onToggled: checked => root.model.prefs.showTitle = checked
        }
        FormRow {
            title: qsTr("Title length")
            enabled: root.model.prefs.showTitle

            Row {
                spacing: 10

                Label {
                    id: titleWidth

                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("%n character(s)", "", root.model.prefs.titleWidth)
                    color: Appearance.colors.secondaryLabel
                    opacity: enabled ? 1 : 0.4
                }
                Stepper {
                    name: qsTr("Title length")
                    valueText: titleWidth.text
                    value: root.model.prefs.titleWidth
                    from: root.model.minTitleWidth
                    to: root.model.maxTitleWidth
                    onValueModified: root.model.prefs.titleWidth = value
                }
            }
        }
        ToggleRow {
            title: qsTr("Hide titles during Do Not Disturb")
            footnote: qsTr("Where the desktop tells of it, as Plasma does; screen sharing included.")
            checked: root.model.prefs.hideTitleWhileInhibited
            onToggled: checked => root.model.prefs.hideTitleWhileInhibited = checked
        }
        ToggleRow {
            title: qsTr("Launch at login")
            footnote: qsTr("Start Mivora quietly when you log in.")
            checked: root.model.prefs.launchAtLogin
            onToggled: checked => root.model.prefs.launchAtLogin = checked
        }
    }

    FormGroup {
        title: qsTr("Before a meeting")

        FormRow {
            hasSeparator: false
            title: qsTr("Show the Join panel")

            Picker {
                name: qsTr("Show the Join panel")
                model: root.model.leadMinutesTexts
                currentIndex: root.model.leadMinutesIndex
                displayText: root.model.leadMinutesText
                onActivated: index => root.model.leadMinutesIndex = index
            }
        }
        FormRow {
            title: qsTr("Panel position")

            Picker {
                name: qsTr("Panel position")
                model: root.model.panelCornerTexts
                currentIndex: root.model.panelCornerIndex
                onActivated: index => root.model.panelCornerIndex = index
            }
        }
        ToggleRow {
            title: qsTr("Also remind me for meetings without a link")
            footnote: qsTr("In-person meetings and calls show the panel too, without a Join button.")
            checked: root.model.prefs.remindWithoutLink
            onToggled: checked => root.model.prefs.remindWithoutLink = checked
        }
    }

    FormGroup {
        title: qsTr("Shortcut")

        ToggleRow {
            visible: !root.model.binding
            hasSeparator: false
            title: qsTr("Join the next meeting with a shortcut")
            footnote: root.model.hotKeyText
            footnoteColor: root.model.doesHotKeyFail ? Appearance.colors.red : Appearance.colors.secondaryLabel
            checked: root.model.useHotKey
            onToggled: checked => root.model.useHotKey = checked
        }
        FormRow {
            visible: root.model.useHotKey && !root.model.binding
            title: qsTr("Shortcut")
            footnote: root.model.desktopKeys.length > 0 && !root.model.canConfigureHotKey
                      ? qsTr("Change the keys in the settings of your desktop.") : root.model.hotKeyConflict
            footnoteColor: root.model.hotKeyConflict ? Appearance.colors.red : Appearance.colors.secondaryLabel

            Row {
                spacing: 10

                HotKeyRecorder {
                    visible: root.model.desktopKeys.length === 0
                    name: qsTr("Shortcut")
                    note: root.model.hotKeyConflict
                    recorder: root.model.recorder
                }
                KeyCaps {
                    visible: root.model.desktopKeys.length > 0
                    anchors.verticalCenter: parent.verticalCenter
                    keys: root.model.desktopKeys
                    Accessible.role: Accessible.StaticText
                    Accessible.name: root.model.desktopKeys.join("+")
                }
                KeloButton {
                    visible: root.model.canConfigureHotKey
                    text: qsTr("Change…")
                    Accessible.description: root.model.desktopKeys.join("+")
                    onClicked: root.model.configureHotKey()
                }
            }
        }
        // Where programs can have no shortcut: what the user can do instead.
        FormRow {
            visible: root.model.binding
            hasSeparator: false
            title: qsTr("Join the next meeting with a shortcut")
            footnote: root.model.hotKeyText

            KeloButton {
                property bool hasCopied: false

                text: hasCopied ? qsTr("Copied") : qsTr("Copy")
                Accessible.description: root.model.hotKeyText + " " + root.model.binding
                onClicked: {
                    root.model.copyBinding()
                    hasCopied = true
                }
            }
        }
        Label {
            visible: root.model.binding
            anchors { left: parent.left; right: parent.right; margins: 12 }
            bottomPadding: 12
            text: root.model.binding
            size: 12
            font.family: "monospace"
            wrapMode: Text.WrapAnywhere
        }
    }
}
