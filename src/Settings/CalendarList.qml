import QtQuick
import QtQuick.Templates as T
import KeloThemeViews

// The calendars of all accounts, however many: only the rows in sight exist. Tab and the arrow keys go from
// row to row, Tab then to what stands below.
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
    function focusFooter() {
        view.positionViewAtEnd()
        view.footerItem.focusFirst()
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
        header: Item { height: 20 }
        footer: Column {
            function focusFirst() {
                browser.focusFirst()
            }

            width: view.width
            bottomPadding: 20
            spacing: 20

            Footnote {
                leftPadding: 12
                rightPadding: 12
                width: parent.width
                text: qsTr("Google or Outlook calendar missing? Add the account under System Settings → Internet Accounts and it appears here.")
                Accessible.ignored: false
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            BrowserSection {
                id: browser

                model: root.model
                goBack: () => root.focusRow(view.count - 1)
            }

            // Not for the list around it, whose rows they would change.
            Keys.onUpPressed: {}
            Keys.onDownPressed: {}
        }
        delegate: CalendarRow {
            width: view.width
            onToggled: checked => root.model.setCalendarOn(index, checked)
            Keys.onTabPressed: root.focusRow(index + 1) || root.focusFooter()
            Keys.onBacktabPressed: event => {
                // The item before the list: the chain itself would go through the footer.
                if (!root.focusRow(index - 1))
                    view.nextItemInFocusChain(false).forceActiveFocus()
            }
        }
    }
}
