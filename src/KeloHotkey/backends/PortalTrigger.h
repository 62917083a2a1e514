#pragma once

#include "KeloHotkey/HotKeyCombo.h"

namespace kelo {

/// The combination as the freedesktop "shortcuts" text that portals take: "LOGO+SHIFT+v". The key is named by
/// what it types on the user's layout. Empty when it has no name.
QString portalTrigger(const HotKeyCombo &combo);

} // namespace kelo
