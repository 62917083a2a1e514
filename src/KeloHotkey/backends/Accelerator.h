#pragma once

#include "KeloHotkey/HotKeyCombo.h"

/// Keys as GTK writes them: "<Control><Alt>j".
namespace kelo::Accelerator {

/// The combination as an accelerator, with the name of what the key types. Empty for a key without a name.
QString of(const HotKeyCombo &combo);

/// Whether the text is an accelerator of this combination, in any of the forms that desktops write.
bool names(const QString &text, const HotKeyCombo &combo);

/// The keys of an accelerator in words, "Ctrl+Alt+J"; the text itself when it is none.
QString words(const QString &text);

} // namespace kelo::Accelerator
