#include "KeloHotkey/backends/X11Modifiers.h"

#include "KeloHotkey/HotKeyCombo.h"
#include "Platform/linux/X11Connection.h"

#include <initializer_list>
#include <xcb/xcb_keysyms.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace kelo {

X11Modifiers X11Modifiers::current(const mivora::X11Connection &x11)
{
    const auto mapping = mivora::owned(
        xcb_get_modifier_mapping_reply(x11.get(), xcb_get_modifier_mapping(x11.get()), nullptr));
    const std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)> symbols(
        xcb_key_symbols_alloc(x11.get()), &xcb_key_symbols_free);
    // The keys of each modifier, one modifier after the other.
    const int perModifier = mapping ? mapping->keycodes_per_modifier : 0;
    const xcb_keycode_t *keys = mapping ? xcb_get_modifier_mapping_keycodes(mapping.get()) : nullptr;
    const auto firstMask = [&](std::initializer_list<xcb_keysym_t> wanted, std::uint16_t customary) {
        for (const xcb_keysym_t symbol : wanted) {
            for (int i = 0; i < 8 * perModifier; ++i) {
                if (xcb_key_symbols_get_keysym(symbols.get(), keys[i], 0) == symbol)
                    return std::uint16_t(1 << i / perModifier);
            }
        }
        return customary;
    };
    return {
        .alt = firstMask({XKB_KEY_Alt_L, XKB_KEY_Alt_R}, XCB_MOD_MASK_1),
        .super = firstMask({XKB_KEY_Super_L, XKB_KEY_Super_R}, XCB_MOD_MASK_4),
        .numLock = firstMask({XKB_KEY_Num_Lock}, 0),
    };
}

std::uint16_t X11Modifiers::mask(std::uint32_t hotKeyModifiers) const
{
    std::uint16_t mask = 0;
    if (hotKeyModifiers & commandKey)
        mask |= super;
    if (hotKeyModifiers & shiftKey)
        mask |= XCB_MOD_MASK_SHIFT;
    if (hotKeyModifiers & optionKey)
        mask |= alt;
    if (hotKeyModifiers & controlKey)
        mask |= XCB_MOD_MASK_CONTROL;
    return mask;
}

} // namespace kelo
