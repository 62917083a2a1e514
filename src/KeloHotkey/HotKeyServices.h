#pragma once

#include "KeloHotkey/HotKeyService.h"

#include <memory>

namespace kelo {

/// What the program's shortcuts are for, in words for places where the desktop shows or needs them.
struct HotKeyPurpose
{
    /// Names the shortcut to the desktop: "join-next-meeting".
    QString name;
    /// Shown to the user where the desktop asks or lists shortcuts: "Join the next meeting".
    QString description;
    /// What has the same effect, for keybindings of the desktop's own: "mivora join".
    QString command;
};

/// The service for the running application: X11 grabs where they see every key, the portal in Wayland
/// sessions, where an X server sees no keys of native windows. MIVORA_HOTKEY, "x11", "portal" or "none",
/// overrules that; any other text doesn't count. Never null.
std::unique_ptr<HotKeyService> makeHotKeyService(const HotKeyPurpose &purpose);

} // namespace kelo
