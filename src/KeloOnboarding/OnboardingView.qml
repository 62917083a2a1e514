import QtQuick
import KeloAppearance
import KeloThemeViews

// The walkthrough: the step on show, and below it how far it is and the way on.
FocusScope {
    id: root

    // pages, index, mainTitle, canSkip, motion, motionLength; advance().
    required property QtObject model
    required property string title

    focus: true

    Accessible.role: Accessible.Dialog
    Accessible.name: title

    // The main button is the default one.
    function accept() {
        model.advance()
    }

    Keys.onPressed: event => stage.scroll(event)

    // A step that goes takes the focus with it; the keys must still arrive.
    Connections {
        target: root.model

        function onIndexChanged() {
            if (stage.activeFocus)
                mainButton.forceActiveFocus(Qt.OtherFocusReason)
        }
    }

    StepStage {
        id: stage

        anchors {
            left: parent.left
            right: parent.right
            top: parent.top
            bottom: footer.top
            leftMargin: 16
            rightMargin: 16
            topMargin: 36
            bottomMargin: 12
        }
        model: root.model
    }

    Item {
        id: footer

        anchors {
            left: parent.left
            right: parent.right
            bottom: parent.bottom
            leftMargin: 28
            rightMargin: 28
            bottomMargin: 24
        }
        height: mainButton.height

        PageDots {
            anchors { left: parent.left; verticalCenter: parent.verticalCenter }
            count: root.model.pages.length
            current: root.model.index
        }
        ButtonBase {
            anchors { right: mainButton.left; rightMargin: 10; verticalCenter: parent.verticalCenter }
            visible: root.model.canSkip
            text: qsTr("Skip for now")
            horizontalPadding: 10
            face: "transparent"
            faceHovered: Appearance.colors.control
            facePressed: Appearance.colors.controlPressed
            labelColor: Appearance.colors.link
            onClicked: root.model.advance()
        }
        KeloProminentButton {
            id: mainButton

            anchors { right: parent.right; verticalCenter: parent.verticalCenter }
            text: root.model.mainTitle
            fontSize: 14
            horizontalPadding: 18
            onClicked: root.model.advance()
        }
    }
}
