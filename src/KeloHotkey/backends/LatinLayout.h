#pragma once

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

struct xcb_connection_t;
struct xkb_keymap;

namespace kelo {

/// The one layout of an XKB keymap that names keys: the active one when it types all of a–z, else the first
/// that does, else the US layout.
class LatinLayout final
{
public:
    /// That of the X server's core keyboard.
    static LatinLayout fromDisplay(xcb_connection_t *connection);

    /// That of XKB layout names ("fr", "ru,us"). Without names those of XKB_DEFAULT_LAYOUT, else "us".
    static LatinLayout fromNames(const QByteArray &names = {}, std::uint32_t active = 0);

    /// That of a keymap as XKB writes it; the one of no names when the text is none.
    static LatinLayout fromText(const QByteArray &keymap, std::uint32_t active);

    /// What the key types without modifiers. Nothing for keys that type nothing visible.
    std::optional<QString> character(std::uint32_t virtualKey) const;

    /// The XKB name of what the key types without modifiers. Empty for a key that has none.
    QString symbolName(std::uint32_t virtualKey) const;

    /// The real modifiers, as an X11 mask, that are on while the key of this symbol is down. Nothing when no
    /// key has it.
    std::optional<std::uint32_t> modifierOf(std::uint32_t symbol) const;

private:
    /// Owns the keymap, which may be null.
    LatinLayout(xkb_keymap *keymap, std::uint32_t active);

    std::uint32_t symbol(std::uint32_t virtualKey) const;

    std::shared_ptr<xkb_keymap> m_keymap;
    std::uint32_t m_index = 0;
};

} // namespace kelo
