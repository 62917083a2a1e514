import QtQuick
import KeloAppearance
import KeloThemeViews

// One calendar of the net: its address, how it went, its name.
FocusScope {
    id: root

    // page, subscribe(), finish(), remove(), cancel(), setHeight()
    required property QtObject dialog

    readonly property var page: dialog.page
    readonly property real neededHeight: texts.height + buttons.height + 60
    readonly property bool isSubscribed: page.isSubscribed
    readonly property bool asksForAddress: page.asksForAddress
    readonly property string knownName: page.name

    function accept() {
        if (primary.visible && primary.enabled)
            primary.clicked()
    }
    function cancel() {
        dialog.cancel()
    }
    function begin() {
        (isSubscribed ? name : asksForAddress ? address : primary).forceActiveFocus()
    }

    focus: true
    onNeededHeightChanged: dialog.setHeight(Math.ceil(neededHeight))
    onKnownNameChanged: {
        name.text = knownName
        name.selectAll()
    }
    onIsSubscribedChanged: begin()
    onAsksForAddressChanged: begin()
    Component.onCompleted: begin()

    Accessible.role: Accessible.Dialog
    Accessible.name: page.title
    Accessible.description: page.explanation

    Column {
        id: texts

        anchors { left: parent.left; right: parent.right; top: parent.top; margins: 20 }
        spacing: 12

        Row {
            width: parent.width
            spacing: 9

            Box {
                id: dot

                anchors.verticalCenter: parent.verticalCenter
                visible: root.isSubscribed
                width: 12
                height: 12
                radius: 6
                color: root.page.color || Appearance.colors.secondaryLabel
                edge: Appearance.colors.outline
            }
            Label {
                width: parent.width - (dot.visible ? dot.width + parent.spacing : 0)
                text: root.page.title
                size: 15
                font.weight: Font.DemiBold
                elide: Text.ElideRight
            }
        }
        Label {
            width: parent.width
            visible: text
            text: root.page.explanation
            color: Appearance.colors.secondaryLabel
            lineHeight: 1.1
            wrapMode: Text.Wrap
        }
        TextField {
            id: address

            width: parent.width
            visible: root.asksForAddress
            enabled: !root.page.isBusy
            name: qsTr("Address of the calendar")
            inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhSensitiveData
        }
        TextField {
            id: name

            width: parent.width
            visible: root.isSubscribed
            enabled: !root.page.isBusy
            name: qsTr("Name of the calendar")
        }
        BusyTrack {
            width: parent.width
            visible: root.page.isBusy
            Accessible.name: qsTr("The calendar is being fetched")
        }
        Label {
            width: parent.width
            visible: text
            text: root.page.state
            color: root.page.isFault ? Appearance.colors.red : Appearance.colors.label
            lineHeight: 1.1
            wrapMode: Text.Wrap
            Accessible.ignored: false
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
    }

    Row {
        id: buttons

        anchors { right: parent.right; bottom: parent.bottom; margins: 20 }
        spacing: 10

        KeloButton {
            text: root.isSubscribed ? qsTr("Remove") : primary.visible ? qsTr("Cancel") : qsTr("Close")
            onClicked: root.isSubscribed ? root.dialog.remove() : root.dialog.cancel()
        }
        KeloProminentButton {
            id: primary

            visible: root.isSubscribed || root.page.canSubscribe
            enabled: !root.page.isBusy && (address.text.trim() || !root.asksForAddress)
            text: root.isSubscribed ? qsTr("Done") : qsTr("Subscribe")
            onClicked: root.isSubscribed ? root.dialog.finish(name.text) : root.dialog.subscribe(address.text)
        }
    }
}
