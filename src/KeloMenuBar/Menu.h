#pragma once

#include <QKeySequence>
#include <QString>
#include <deque>
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

    bool canBeChosen() const { return isEnabled && !isSeparator; }
};

/// A menu item that runs a closure when it is chosen.
struct ClosureMenuItem : MenuItem
{
    /// A separator, or an item that does nothing, has none.
    std::function<void()> action;
};

/// A menu as data: what the host of the status item, or the popup menu, draws.
class Menu
{
public:
    /// Appends an item. The reference stays good until `removeAll`, so that the item can be changed further.
    ClosureMenuItem &addItem(const QString &title, const QString &keyEquivalent,
                             std::function<void()> action);

    /// Appends a line between two groups of items.
    void addSeparator();

    /// Forgets all items, and their closures.
    void removeAll();

    const std::deque<ClosureMenuItem> &items() const { return m_items; }

private:
    // A deque: appending does not move the items that were handed out.
    std::deque<ClosureMenuItem> m_items;
};

} // namespace kelo
