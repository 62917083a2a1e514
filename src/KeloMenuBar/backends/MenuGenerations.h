#pragma once

#include "KeloMenuBar/Menu.h"
#include "KeloMenuBar/backends/BusTypes.h"

#include <deque>
#include <functional>
#include <optional>

namespace kelo {

/// The properties of an item as com.canonical.dbusmenu has them; those with their default value left out.
QVariantMap dbusMenuProperties(const MenuItem &item);

/// The menu in the form that com.canonical.dbusmenu gives it: items by number, anew at each opening.
///
/// Numbers are never used again, so that a host cannot mix up two openings. A click may come when the next
/// opening has already been built: the items of the last few generations therefore stay alive.
class MenuGenerations final
{
public:
    /// The number of the menu itself.
    static constexpr int rootId = 0;

    /// Puts this menu in place of the current one.
    void replace(Menu menu);

    /// Counts the generations; 0 while there is none.
    uint revision() const { return m_revision; }

    /// The menu with all its items.
    DBusMenuLayout layout() const;

    /// The properties of the menu itself or of a current item; nothing for an unknown number.
    std::optional<QVariantMap> properties(int id) const;

    /// Whether the number is the menu's own or an item's that can still be clicked.
    bool contains(int id) const { return id == rootId || item(id); }

    /// The closure of an item; empty if it is unknown, disabled or does nothing.
    std::function<void()> action(int id) const;

private:
    struct Generation
    {
        int firstId = 1;
        Menu menu;
    };

    const ClosureMenuItem *item(int id) const;

    // The current one is the last.
    std::deque<Generation> m_generations;
    int m_nextId = 1;
    uint m_revision = 0;
};

} // namespace kelo
