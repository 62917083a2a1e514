import QtQuick
import QtQuick.Templates as T
import KeloAppearance

// Says more about the control that it stands in when the pointer rests there.
T.ToolTip {
    id: root

    visible: text && parent && parent.hovered
    delay: 700
    x: parent ? (parent.width - width) / 2 : 0
    y: -height - 6
    margins: 6
    horizontalPadding: 8
    verticalPadding: 4
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding

    background: Box {
        radius: 6
        color: Appearance.colors.panel
        edge: Appearance.colors.panelBorder
    }
    contentItem: Footnote {
        text: root.text
        wrapMode: Text.NoWrap
        color: Appearance.colors.label
    }
}
