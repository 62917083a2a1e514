#pragma once

#include "KeloHotkey/HotKeyCombo.h"

/// Keys as GTK writes them: "<Control><Alt>j".
namespace kelo::Accelerator {

/// The combination as an accelerator, with the name of what the key types. Empty for a key without a name.
QString of(const HotKeyCombo &combo);

/// The combination of an accelerator in any of the forms that desktops write. Nothing for other texts, and
/// when no key of the user's layout types it.
std::optional<HotKeyCombo> read(const QString &text);

} // namespace kelo::Accelerator
