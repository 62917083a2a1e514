#pragma once

#include <QKeySequence>
#include <QString>
#include <functional>

namespace kelo {

/// What is held with a key equivalent. The command modifier is Ctrl on this desktop.
enum class KeyModifiers {
    Command,
    CommandShift,
};

/// How one entry of a menu looks: a text that can be chosen, or a separator.
struct MenuItem
{
    QString title{};
    /// The character of the shortcut, "," or "q"; empty for none.
    QString keyEquivalent{};
    KeyModifiers modifiers = KeyModifiers::Command;
    bool isEnabled = true;
    bool isSeparator = false;

    /// The title to be drawn: a name in Arabic or Hebrew does not turn around the line that it stands in, so
    /// that what comes first stands below what comes first in the other lines.
    QString text() const;

    /// The key equivalent with its modifiers; its text is in the words of the user's keyboard. Empty for
    /// none.
    QKeySequence shortcut() const;

    friend bool operator==(const MenuItem &, const MenuItem &) = default;
};

/// A menu item that runs a closure when it is chosen.
struct ClosureMenuItem : MenuItem
{
    /// A separator without title, or an item that does nothing, have no action.
    std::function<void()> action;

    ClosureMenuItem(const QString &title, std::function<void()> action, const QString &keyEquivalent);

    /// A line between two groups of items.
    static ClosureMenuItem separator();
};

} // namespace kelo
