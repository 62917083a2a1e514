#include "KeloHotkey/backends/X11Modifiers.h"

#include "KeloHotkey/HotKeyCombo.h"

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace kelo {

namespace {

struct Free
{
    void operator()(void *memory) const { std::free(memory); }
};

constexpr int modifierCount = 8;

using ModifierMapping = std::unique_ptr<xcb_get_modifier_mapping_reply_t, Free>;
using Symbols = std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)>;

// The mask of the first modifier that the key is one of; 0 for none.
std::uint16_t maskOfKey(const xcb_get_modifier_mapping_reply_t *mapping, xcb_keycode_t key)
{
    const xcb_keycode_t *keys = xcb_get_modifier_mapping_keycodes(mapping);
    for (int modifier = 0; modifier < modifierCount; ++modifier) {
        for (int index = 0; index < mapping->keycodes_per_modifier; ++index) {
            if (keys[modifier * mapping->keycodes_per_modifier + index] == key)
                return static_cast<std::uint16_t>(1 << modifier);
        }
    }
    return 0;
}

std::uint16_t maskOfSymbol(const xcb_get_modifier_mapping_reply_t *mapping, xcb_key_symbols_t *symbols,
                           xcb_keysym_t symbol)
{
    const std::unique_ptr<xcb_keycode_t, Free> keys(xcb_key_symbols_get_keycode(symbols, symbol));
    for (const xcb_keycode_t *key = keys.get(); key && *key != XCB_NO_SYMBOL; ++key) {
        if (const std::uint16_t mask = maskOfKey(mapping, *key))
            return mask;
    }
    return 0;
}

std::uint16_t firstOf(std::uint16_t left, std::uint16_t right, std::uint16_t customary)
{
    return left ? left : right ? right : customary;
}

} // namespace

X11Modifiers X11Modifiers::current(xcb_connection_t *connection)
{
    const ModifierMapping mapping(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    const Symbols symbols(xcb_key_symbols_alloc(connection), &xcb_key_symbols_free);
    if (!mapping || !symbols)
        return {.alt = XCB_MOD_MASK_1, .super = XCB_MOD_MASK_4, .numLock = 0};
    const auto mask = [&](xcb_keysym_t symbol) { return maskOfSymbol(mapping.get(), symbols.get(), symbol); };
    return {
        .alt = firstOf(mask(XKB_KEY_Alt_L), mask(XKB_KEY_Alt_R), XCB_MOD_MASK_1),
        .super = firstOf(mask(XKB_KEY_Super_L), mask(XKB_KEY_Super_R), XCB_MOD_MASK_4),
        .numLock = mask(XKB_KEY_Num_Lock),
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

std::uint16_t X11Modifiers::relevant() const
{
    return mask(commandKey | shiftKey | optionKey | controlKey);
}

} // namespace kelo
