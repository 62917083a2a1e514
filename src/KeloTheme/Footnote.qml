import QtQuick
import KeloAppearance

// Small print.
Label {
    color: Appearance.colors.secondaryLabel
    size: 11
    lineHeight: 1.1
    wrapMode: Text.Wrap
}
