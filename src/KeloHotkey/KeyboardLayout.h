#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

class QObject;

/// Names of physical keys on the user's keyboard layout, and back. Where layouts of several scripts are set
/// up, the Latin one counts. Everything takes and gives virtual key codes.
namespace kelo::KeyboardLayout {

/// What the key types without modifiers; a dead key its spacing character. Nothing for keys that type nothing
/// visible.
std::optional<QString> character(std::uint16_t keyCode);

/// The name on the key cap: "V", "Space", "F5", "←"; "#105" for a key that has none.
QString displayName(std::uint16_t keyCode);

/// The key's name in words, as this desktop has them in its lists of shortcuts: "V", "Space", "F5", "Left",
/// "Home".
QString name(std::uint16_t keyCode);

/// The lowest key code up to 127 whose key types the characters, in upper or lower case. Nothing when none
/// does.
std::optional<std::uint16_t> keyCode(const QString &forCharacters);

/// The key's symbol without modifiers as the XKB name that desktop shortcuts are written with: "v", "Return".
/// Empty for a key that has none.
QString symbolName(std::uint16_t keyCode);

/// Calls `changed` whenever names may be other ones, as long as `context` lives.
void onChange(QObject *context, const std::function<void()> &changed);

} // namespace kelo::KeyboardLayout
