#pragma once

#include <cstdint>

struct xcb_connection_t;

namespace kelo {

/// Which of an X server's eight modifiers mean what; the keymap decides that.
struct X11Modifiers
{
    std::uint16_t alt = 0;
    std::uint16_t super = 0;
    /// 0 when no key is Num Lock.
    std::uint16_t numLock = 0;

    friend bool operator==(const X11Modifiers &, const X11Modifiers &) = default;

    /// Asks the server. Alt and Super have their customary modifiers when no key is theirs.
    static X11Modifiers current(xcb_connection_t *connection);

    /// The mask of a grab for HotKeyModifier bits, without locks.
    std::uint16_t mask(std::uint32_t hotKeyModifiers) const;

    /// What mask() can give: all else in an event's state doesn't matter.
    std::uint16_t relevant() const;
};

} // namespace kelo
