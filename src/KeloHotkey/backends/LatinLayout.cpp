#include "KeloHotkey/backends/LatinLayout.h"

#include "KeloHotkey/VirtualKeys.h"

#include <bitset>
#include <iterator>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

namespace kelo {

namespace {

struct DeadKey
{
    xkb_keysym_t symbol;
    char16_t spacing;
};

// Dead keys have no character of their own; this is what the key caps show of those that Latin layouts have
// without modifiers.
constexpr DeadKey deadKeys[] = {
    {XKB_KEY_dead_grave, u'`'},       {XKB_KEY_dead_acute, u'´'},     {XKB_KEY_dead_circumflex, u'^'},
    {XKB_KEY_dead_tilde, u'~'},       {XKB_KEY_dead_diaeresis, u'¨'}, {XKB_KEY_dead_abovering, u'˚'},
    {XKB_KEY_dead_doubleacute, u'˝'}, {XKB_KEY_dead_caron, u'ˇ'},     {XKB_KEY_dead_cedilla, u'¸'},
    {XKB_KEY_dead_ogonek, u'˛'},      {XKB_KEY_dead_belowdot, u'.'},  {XKB_KEY_dead_stroke, u'/'},
};

// Null where the XKB data isn't installed.
std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> newContext()
{
    return {xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref};
}

xkb_keysym_t symbolAt(xkb_keymap *keymap, xkb_keycode_t key, xkb_layout_index_t layout,
                      xkb_level_index_t level)
{
    const xkb_keysym_t *symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols) != 1)
        return XKB_KEY_NoSymbol;
    return symbols[0];
}

bool typesLatinLetters(xkb_keymap *keymap, xkb_layout_index_t layout)
{
    std::bitset<26> found;
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= xkb_keymap_max_keycode(keymap); ++key) {
        const xkb_keysym_t symbol = symbolAt(keymap, key, layout, 0);
        if (symbol >= XKB_KEY_a && symbol <= XKB_KEY_z)
            found.set(symbol - XKB_KEY_a);
    }
    return found.all();
}

std::optional<xkb_layout_index_t> latinIndex(xkb_keymap *keymap, xkb_layout_index_t active)
{
    const xkb_layout_index_t count = keymap ? xkb_keymap_num_layouts(keymap) : 0;
    if (active < count && typesLatinLetters(keymap, active))
        return active;
    for (xkb_layout_index_t index = 0; index < count; ++index) {
        if (typesLatinLetters(keymap, index))
            return index;
    }
    return std::nullopt;
}

// Without names those of XKB_DEFAULT_LAYOUT, else "us".
xkb_keymap *keymapFromNames(const QByteArray &names)
{
    const auto context = newContext();
    xkb_rule_names wanted{};
    wanted.layout = names.isEmpty() ? nullptr : names.constData();
    return context ? xkb_keymap_new_from_names(context.get(), &wanted, XKB_KEYMAP_COMPILE_NO_FLAGS) : nullptr;
}

// The layout that the user has switched to.
xkb_layout_index_t activeLayout(xkb_keymap *keymap, xcb_connection_t *connection, std::int32_t device)
{
    xkb_state *state = xkb_x11_state_new_from_device(keymap, connection, device);
    if (!state)
        return 0;
    const auto active = xkb_state_serialize_layout(state, XKB_STATE_LAYOUT_EFFECTIVE);
    xkb_state_unref(state);
    return active;
}

} // namespace

LatinLayout::LatinLayout(xkb_keymap *keymap, std::uint32_t active) : m_keymap(keymap, &xkb_keymap_unref)
{
    if (const auto index = latinIndex(keymap, active))
        m_index = *index;
    else
        m_keymap.reset(keymapFromNames("us"), &xkb_keymap_unref);
}

LatinLayout LatinLayout::fromNames(const QByteArray &names, std::uint32_t active)
{
    return {keymapFromNames(names), active};
}

LatinLayout LatinLayout::fromText(const QByteArray &keymap, std::uint32_t active)
{
    const auto context = newContext();
    if (keymap.isEmpty() || !context)
        return fromNames();
    return {xkb_keymap_new_from_string(context.get(), keymap.constData(), XKB_KEYMAP_FORMAT_TEXT_V1,
                                       XKB_KEYMAP_COMPILE_NO_FLAGS),
            active};
}

LatinLayout LatinLayout::fromDisplay(xcb_connection_t *connection)
{
    const auto context = newContext();
    const std::int32_t device = xkb_x11_get_core_keyboard_device_id(connection);
    xkb_keymap *keymap =
        context && device >= 0
            ? xkb_x11_keymap_new_from_device(context.get(), connection, device, XKB_KEYMAP_COMPILE_NO_FLAGS)
            : nullptr;
    return {keymap, keymap ? activeLayout(keymap, connection, device) : 0};
}

std::uint32_t LatinLayout::symbol(std::uint32_t virtualKey) const
{
    const auto key = xKeyCode(virtualKey);
    if (!m_keymap || !key)
        return XKB_KEY_NoSymbol;
    // The digits of the keypad are its second level, the one that Num Lock switches to.
    const xkb_keysym_t onKeypad = symbolAt(m_keymap.get(), *key, m_index, 1);
    if (onKeypad >= XKB_KEY_KP_Multiply && onKeypad <= XKB_KEY_KP_9)
        return onKeypad;
    return symbolAt(m_keymap.get(), *key, m_index, 0);
}

std::optional<std::uint32_t> LatinLayout::modifierOf(std::uint32_t symbol) const
{
    xkb_keymap *keymap = m_keymap.get();
    std::optional<std::uint32_t> mask;
    if (!keymap)
        return mask;
    xkb_state *state = xkb_state_new(keymap);
    for (auto key = xkb_keymap_min_keycode(keymap); !mask && key <= xkb_keymap_max_keycode(keymap); ++key) {
        if (symbolAt(keymap, key, m_index, 0) != symbol)
            continue;
        xkb_state_update_key(state, key, XKB_KEY_DOWN);
        mask = xkb_state_serialize_mods(state, XKB_STATE_MODS_EFFECTIVE) & 0xff;
    }
    xkb_state_unref(state);
    return mask;
}

std::optional<QString> LatinLayout::character(std::uint32_t virtualKey) const
{
    const xkb_keysym_t wanted = symbol(virtualKey);
    const auto *dead = std::ranges::find(deadKeys, wanted, &DeadKey::symbol);
    if (dead != std::end(deadKeys))
        return QString(QChar(dead->spacing));
    const char32_t character = xkb_keysym_to_utf32(wanted);
    if (!QChar::isPrint(character))
        return std::nullopt;
    return QString::fromUcs4(&character, 1);
}

QString LatinLayout::symbolName(std::uint32_t virtualKey) const
{
    const xkb_keysym_t wanted = symbol(virtualKey);
    char name[64] = {};
    if (wanted == XKB_KEY_NoSymbol || xkb_keysym_get_name(wanted, name, sizeof name) <= 0)
        return {};
    return QString::fromLatin1(name);
}

} // namespace kelo
