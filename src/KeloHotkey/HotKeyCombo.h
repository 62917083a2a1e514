#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <Qt>
#include <cstdint>
#include <optional>

namespace kelo {

/// Bits of HotKeyCombo::modifiers.
///
/// On this desktop the command key is the one labelled Super, Meta or with a logo, and option is Alt. Control
/// stays Ctrl: a shortcut keeps the keys that the user pressed for it. (Menus are another matter, their
/// command key is Ctrl here.)
enum HotKeyModifier : std::uint32_t {
    commandKey = 0x100,
    shiftKey = 0x200,
    optionKey = 0x800,
    controlKey = 0x1000,
};

/// A global shortcut: a physical key and the modifiers held with it.
struct HotKeyCombo
{
    /// The virtual key code: names the physical key, whatever the layout (9 types V on a US keyboard).
    std::uint32_t keyCode = 9;
    /// Any of HotKeyModifier.
    std::uint32_t modifiers = commandKey | shiftKey;

    friend bool operator==(const HotKeyCombo &, const HotKeyCombo &) = default;

    /// ⇧⌘V
    static const HotKeyCombo defaultCombo;

    /// The modifiers of a key event as HotKeyModifier bits; others than the four are dropped.
    static std::uint32_t carbonFlags(Qt::KeyboardModifiers modifiers);

    /// What the key caps of the combination show, in their order: "⌃", "⌥", "⇧", "⌘", then the key's name on
    /// the user's layout. A key code above 65,535 stops the program.
    QStringList keyCaps() const;

    /// The key caps in one word: "⇧⌘V".
    QString displayString() const;

    /// The keys as this desktop names them, in its order and in the user's language: "Ctrl", "Alt", "J".
    /// Where displayString() has the symbols of other keyboards, this is for people. A key code above 65,535
    /// stops the program.
    QStringList keyNames() const;

    /// The names in one text: "Ctrl+Alt+J".
    QString text() const { return keyNames().join(QLatin1Char('+')); }

    /// The keys as programs read them: the modifiers by these names of control, option, shift and command,
    /// "CTRL ALT SHIFT LOGO", then the XKB name of what the key types on the user's layout. Empty for a key
    /// without such a name.
    QStringList keysIn(const char *modifierNames) const;

    /// {"keyCode":9,"modifiers":768}
    QByteArray toJson() const;

    /// The combination stored as JSON by toJson(). Nothing unless both keys are there as unsigned 32-bit
    /// integers.
    static std::optional<HotKeyCombo> fromJson(const QByteArray &json);
};

inline constexpr HotKeyCombo HotKeyCombo::defaultCombo{};

} // namespace kelo
