#pragma once

#include <cstdint>

namespace mivora {
class X11Connection;
}

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
    static X11Modifiers current(const mivora::X11Connection &x11);

    /// The mask of a grab for HotKeyModifier bits, without locks.
    std::uint16_t mask(std::uint32_t hotKeyModifiers) const;
};

} // namespace kelo
