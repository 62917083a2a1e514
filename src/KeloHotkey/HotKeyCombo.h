#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>

namespace kelo {

/// Bits of HotKeyCombo::modifiers.
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

    /// {"keyCode":9,"modifiers":768}
    QByteArray toJson() const;

    /// The combination stored as JSON by toJson(). Nothing unless both keys are there as unsigned 32-bit integers.
    static std::optional<HotKeyCombo> fromJson(const QByteArray &json);
};

} // namespace kelo
