import QtQuick
import KeloAppearance
import KeloThemeViews

// Something worth knowing: an accented symbol and a sentence.
Item {
    id: root

    required property string symbol
    required property string text

    implicitHeight: Math.max(picture.height, label.height)

    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Symbol {
        id: picture

        anchors { left: parent.left; leftMargin: 2; verticalCenter: label.verticalCenter }
        name: root.symbol
        color: Appearance.colors.link
        size: 20
    }
    Label {
        id: label

        anchors { left: picture.right; right: parent.right; leftMargin: 12 }
        text: root.text.replace(/ (\S+)$/, "\u00a0$1")
        lineHeight: 1.1
        wrapMode: Text.Wrap
    }
}
