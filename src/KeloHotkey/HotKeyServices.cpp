#include "KeloHotkey/HotKeyServices.h"

#include "KeloHotkey/backends/PortalService.h"
#include "KeloHotkey/backends/X11GrabService.h"
#include "Platform/linux/X11Connection.h"

#include <QDBusConnection>

namespace kelo {

std::unique_ptr<HotKeyService> makeHotKeyService(const HotKeyPurpose &purpose)
{
    const QByteArray overrule = qgetenv("MIVORA_HOTKEY");
    const bool isWayland =
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
    const bool wantsGrabs = overrule == "x11" || (!isWayland && overrule != "portal");
    if (wantsGrabs && overrule != "none" && mivora::X11Connection::isAvailable()) {
        // A keybinding that a Wayland session has left works in this one as well, and has the keys.
        const auto left = GnomeKeybinding::create(purpose);
        if (!left || !left->exists())
            return std::make_unique<X11GrabService>();
    }
    // Without a bus there is no portal: nothing can be registered.
    const bool hasNone = overrule == "none" || (wantsGrabs && !mivora::X11Connection::isAvailable());
    return std::make_unique<PortalService>(purpose, hasNone ? QDBusConnection(QString())
                                                            : QDBusConnection::sessionBus());
}

} // namespace kelo
