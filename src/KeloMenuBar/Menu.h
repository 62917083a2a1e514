#pragma once

#include "KeloMenuBar/MenuItem.h"

#include <deque>

namespace kelo {

/// A menu as data: what the host of the status item, or the own popup, draws.
class Menu
{
public:
    /// Appends an item. The reference stays good until removeAll(), so that the item can be changed further.
    ClosureMenuItem &addItem(const QString &title, const QString &keyEquivalent,
                             std::function<void()> action);

    /// Appends a separator.
    void addSeparator();

    /// Forgets all items, and their closures.
    void removeAll();

    const std::deque<ClosureMenuItem> &items() const { return m_items; }

private:
    // A deque: appending does not move the items that were handed out.
    std::deque<ClosureMenuItem> m_items;
};

} // namespace kelo
