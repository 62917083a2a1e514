#include "KeloHotkey/HotKeyServices.h"

#include "KeloHotkey/backends/NoService.h"
#include "KeloHotkey/backends/PortalService.h"
#include "KeloHotkey/backends/X11GrabService.h"
#include "KeloHotkey/backends/X11Keyboard.h"

#include <QDBusConnection>

namespace kelo {

HotKeyEnvironment HotKeyEnvironment::current()
{
    return {
        .isOnX11 = X11Keyboard::connection() != nullptr,
        .isWaylandSession =
            !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland",
        .overrule = qgetenv("MIVORA_HOTKEY"),
    };
}

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

std::unique_ptr<HotKeyService> makeHotKeyService(const HotKeyPurpose &purpose,
                                                 const HotKeyEnvironment &environment)
{
    switch (chooseHotKeyService(environment)) {
    case HotKeyServiceKind::X11Grabs:
        return std::make_unique<X11GrabService>(X11Keyboard::connection());
    case HotKeyServiceKind::Portal:
        return std::make_unique<PortalService>(purpose, QDBusConnection::sessionBus());
    case HotKeyServiceKind::None:
        break;
    }
    return std::make_unique<NoService>(purpose);
}

} // namespace kelo
