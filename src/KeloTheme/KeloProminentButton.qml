import QtQuick
import KeloAppearance

// The button of a view's main action.
ButtonBase {
    face: Appearance.colors.accent
    faceHovered: Appearance.colors.accentHovered
    facePressed: Appearance.colors.accentPressed
    labelColor: Appearance.colors.accentLabel
    fontWeight: Font.DemiBold
}
