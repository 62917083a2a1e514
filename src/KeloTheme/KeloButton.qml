import KeloAppearance

// A push button.
ButtonBase {
    face: Appearance.colors.control
    faceHovered: Appearance.colors.controlHovered
    facePressed: Appearance.colors.controlPressed
    labelColor: Appearance.colors.label
    edge: Appearance.colors.controlBorder
}
