import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// A line of text to type in.
T.TextField {
    id: root

    // For screen readers.
    property string name

    implicitHeight: Math.round(34 * Appearance.textScale)
    leftPadding: 10
    rightPadding: 10
    verticalAlignment: TextInput.AlignVCenter
    color: Appearance.colors.label
    selectionColor: Appearance.colors.accent
    selectedTextColor: Appearance.colors.accentLabel
    font.family: Appearance.fontFamily
    font.pixelSize: Math.round(13 * Appearance.textScale)
    selectByMouse: true
    opacity: enabled ? 1 : 0.4
    Accessible.role: Accessible.EditableText
    Accessible.name: name

    background: Box {
        radius: 8
        color: Appearance.colors.groupBackground
        edge: root.activeFocus ? Appearance.colors.mark : Appearance.colors.outline
        edgeWidth: root.activeFocus ? 2 : 1
    }
}
