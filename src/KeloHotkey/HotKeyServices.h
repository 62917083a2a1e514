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

/// The ways to register global shortcuts.
enum class HotKeyServiceKind { X11Grabs, Portal, None };

/// What the choice of a service depends on.
struct HotKeyEnvironment
{
    /// The application's windows are on an X server.
    bool isOnX11 = false;
    /// The session's compositor speaks Wayland, so an X server in it sees no keys of native windows.
    bool isWaylandSession = false;
    /// MIVORA_HOTKEY: "x11", "portal" or "none" overrules; anything else doesn't count.
    QByteArray overrule;
};

/// X11 grabs where they see every key, the portal in Wayland sessions.
HotKeyServiceKind chooseHotKeyService(const HotKeyEnvironment &environment);

/// The service for the running application. Never null.
std::unique_ptr<HotKeyService> makeHotKeyService(const HotKeyPurpose &purpose);

} // namespace kelo
