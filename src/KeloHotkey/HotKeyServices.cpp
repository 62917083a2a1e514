#include "KeloHotkey/HotKeyServices.h"

#include "KeloHotkey/backends/GnomeKeybinding.h"
#include "KeloHotkey/backends/PortalService.h"
#include "KeloHotkey/backends/X11GrabService.h"
#include "Platform/linux/X11Connection.h"

#include <QDBusConnection>

namespace kelo {

HotKeyServiceKind chooseHotKeyService(const HotKeyEnvironment &environment)
{
    if (environment.overrule == "none")
        return HotKeyServiceKind::None;
    if (environment.overrule == "portal")
        return HotKeyServiceKind::Portal;
    const bool wantsGrabs = environment.overrule == "x11" || !environment.isWaylandSession;
    if (wantsGrabs)
        return environment.isOnX11 ? HotKeyServiceKind::X11Grabs : HotKeyServiceKind::None;
    return HotKeyServiceKind::Portal;
}

std::unique_ptr<HotKeyService> makeHotKeyService(const HotKeyPurpose &purpose)
{
    const HotKeyServiceKind kind = chooseHotKeyService({
        .isOnX11 = mivora::X11Connection::isAvailable(),
        .isWaylandSession =
            !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland",
        .overrule = qgetenv("MIVORA_HOTKEY"),
    });
    if (kind == HotKeyServiceKind::X11Grabs) {
        // One that a Wayland session has left works in this one as well, and has the keys.
        if (auto keybinding = GnomeKeybinding::create(purpose); keybinding && keybinding->hasEntry())
            return keybinding;
        return std::make_unique<X11GrabService>();
    }
    // Without a bus there is no portal: nothing can be registered.
    return std::make_unique<PortalService>(purpose, kind == HotKeyServiceKind::Portal
                                                        ? QDBusConnection::sessionBus()
                                                        : QDBusConnection(QString()));
}

} // namespace kelo
