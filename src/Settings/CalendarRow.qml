import QtQuick
import KeloAppearance
import KeloThemeViews

// One calendar in the list of all; the first one of an account has the account's title above it.
FocusScope {
    id: root

    required property int index
    required property string title
    required property string calendarColor
    required property string account
    required property bool isOn
    required property bool isFirst
    required property bool isLast
    required property bool isOwn
    property alias keyTargets: row.keyTargets

    signal toggled(bool checked)
    signal edited()

    // False when there is no more to reach in the row.
    function focusEdit() {
        if (!isOwn || edit.activeFocus)
            return false
        edit.forceActiveFocus(Qt.TabFocusReason)
        return true
    }

    onActiveFocusChanged: {
        if (activeFocus) {
            ListView.view.currentIndex = index
            if (Appearance.usesKeyboard)
                ListView.view.positionViewAtIndex(index, ListView.Contain)
            row.focusControl()
        }
    }

    // A row that waits for reuse is not drawn, but a screen reader would still read it.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true

    implicitHeight: row.y + row.implicitHeight + (isLast ? 20 : 0)

    FormHeader {
        id: header

        visible: root.isFirst
        title: root.account
    }
    // A sheet whose ends are round where the account begins and ends: what is to be straight is clipped away.
    Item {
        anchors.fill: row
        clip: !(root.isFirst && root.isLast)

        Box {
            width: parent.width
            y: root.isFirst ? 0 : -radius
            height: parent.height - y + (root.isLast ? 0 : radius)
            radius: 10
            color: Appearance.colors.groupBackground
            edge: Appearance.colors.controlBorder
        }
    }
    ToggleRow {
        id: row

        y: root.isFirst ? header.height : 0
        width: root.width
        isTabStop: false
        hasSeparator: !root.isFirst
        title: root.title
        checked: root.isOn
        onToggled: checked => root.toggled(checked)
        leading: Box {
            width: 10
            height: 10
            radius: 5
            color: root.calendarColor || Appearance.colors.secondaryLabel
            edge: Appearance.colors.outline
        }

        KeloButton {
            id: edit

            anchors.verticalCenter: parent.verticalCenter
            visible: root.isOwn
            text: qsTr("Edit…")
            fontSize: 12
            focusPolicy: Qt.ClickFocus
            Accessible.description: root.title
            onClicked: root.edited()
            Keys.onBacktabPressed: row.focusControl()
        }
    }
}
