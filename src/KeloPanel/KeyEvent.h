#pragma once

#include <Qt>
#include <cstdint>

namespace kelo {

/// A key that went down while a panel had the keyboard.
struct KeyEvent
{
    /// The physical key as the window system names it: on X11 and Wayland the kernel's key code plus 8.
    std::uint32_t nativeScanCode = 0;
    Qt::KeyboardModifiers modifiers;
    bool isRepeat = false;
};

} // namespace kelo
