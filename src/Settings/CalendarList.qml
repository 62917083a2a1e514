import QtQuick
import QtQuick.Templates as T
import KeloAppearance
import KeloThemeViews

// The calendars of all accounts, however many: only the rows in sight exist. They are one stop for Tab; arrow and page
// keys, Home, End and the first letters of a title go from row to row.
Item {
    id: root

    required property QtObject model

    function focusRow(row) {
        if (row < 0 || row >= view.count)
            return false
        view.currentIndex = row
        view.positionViewAtIndex(row, ListView.Contain)
        view.currentItem.forceActiveFocus()
        return true
    }
    // Where the key leads to; undefined for other keys.
    function rowOf(event) {
        const page = Math.max(1, Math.floor(view.height / (60 * Appearance.textScale)))
        const last = view.count - 1
        switch (event.key) {
        case Qt.Key_Home: return 0
        case Qt.Key_End: return last
        case Qt.Key_PageUp: return Math.max(0, view.currentIndex - page)
        case Qt.Key_PageDown: return Math.min(last, view.currentIndex + page)
        }
        // A blank belongs to a title that is being typed; by itself it toggles.
        if (event.text >= (typing.running ? " " : "!") && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)))
            return find(event.text)
    }
    function find(text) {
        const isNew = !typing.running
        typing.text = isNew ? text : typing.text + text
        typing.restart()
        return root.model.calendars.find(typing.text, view.currentIndex + isNew)
    }
    function focusFooter() {
        view.positionViewAtEnd()
        view.footerItem.focusFirst()
    }

    Keys.onPressed: event => {
        const row = view.currentItem && view.currentItem.activeFocus ? rowOf(event) : undefined
        event.accepted = row !== undefined
        if (event.accepted)
            focusRow(row)
    }
    Keys.onReleased: event => event.accepted = event.key === Qt.Key_Space && typing.running

    Timer {
        id: typing

        property string text

        interval: 1000
    }
    ListView {
        id: view

        anchors { fill: parent; leftMargin: 20; rightMargin: 20 }
        model: root.model.calendars
        reuseItems: true
        cacheBuffer: 400
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        highlightMoveDuration: 0
        T.ScrollBar.vertical: ScrollMark {
            parent: root
            anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
        }
        activeFocusOnTab: count > 0
        // It would hand the focus to the control below its rows that had it last.
        onActiveFocusChanged: {
            if (!activeFocus && currentItem)
                currentItem.focus = true
        }
        header: Item { height: 20 }
        footer: Column {
            readonly property Item focused: Window.activeFocusItem

            // Controls below the rows come into sight with the keyboard.
            onFocusedChanged: {
                for (let above = focused; above !== this; above = above.parent) {
                    if (!above || !Appearance.usesKeyboard)
                        return
                }
                const top = focused.mapToItem(view.contentItem, 0, 0).y - 20
                view.contentY = Math.min(top, Math.max(view.contentY, top + focused.height + 40 - view.height))
            }
            function focusFirst() {
                if (subscribe.visible)
                    subscribe.forceActiveFocus(Qt.TabFocusReason)
                else
                    leaveOut.focusFirst()
            }

            width: view.width
            bottomPadding: 20
            spacing: 20

            KeloButton {
                id: subscribe

                visible: root.model.ways.canSubscribe
                x: 12
                text: qsTr("Subscribe to a calendar…")
                fontSize: 12
                onClicked: root.model.ways.subscribe()
                Keys.onBacktabPressed: root.focusRow(view.currentIndex)
            }
            Footnote {
                leftPadding: 12
                rightPadding: 12
                width: parent.width
                text: root.model.ways.hasAccounts
                      ? qsTr("Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.")
                      : qsTr("Google or Outlook calendar missing? Subscribe to its private address and it appears here.")
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            LeaveOutSection {
                id: leaveOut

                prefs: root.model.prefs
                goBack: () => subscribe.visible ? subscribe.forceActiveFocus(Qt.BacktabFocusReason)
                                                : root.focusRow(view.currentIndex)
            }
            BrowserSection { model: root.model }

            // Not for the list around it, whose rows they would change.
            Keys.onUpPressed: {}
            Keys.onDownPressed: {}
        }
        delegate: CalendarRow {
            width: view.width
            keyTargets: [root]
            onToggled: checked => root.model.setCalendarOn(index, checked)
            onEdited: root.model.edit(index)
            Keys.onTabPressed: focusEdit() || root.focusFooter()
            // The item before the list: the chain itself would go through the footer.
            Keys.onBacktabPressed: view.nextItemInFocusChain(false).forceActiveFocus()
        }
    }
}
