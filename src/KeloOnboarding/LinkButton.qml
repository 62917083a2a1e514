import QtQuick
import KeloAppearance
import KeloThemeViews

// A button that looks like a link.
ButtonBase {
    face: "transparent"
    faceHovered: Appearance.colors.control
    facePressed: Appearance.colors.controlPressed
    labelColor: Appearance.colors.link
    horizontalPadding: 10
}
