#pragma once

#include <QString>

namespace kelo {

/// Everything that a status item shows, whatever shows it.
struct StatusItemState
{
    /// The text beside the icon; empty for the icon alone. Blanks around it don't matter.
    QString title{};
    /// A few characters that stand for the title where there is room for a square only ("2m").
    QString countdown{};
    /// Icon and texts are drawn in orange.
    bool isUrgent = false;
    /// The name of the icon's symbol, "calendar.badge.clock".
    QString icon{};
    /// What a screen reader says for the icon.
    QString accessibilityDescription{};
    /// Empty for none.
    QString toolTip{};
    bool isVisible = true;

    friend bool operator==(const StatusItemState &, const StatusItemState &) = default;
};

} // namespace kelo
