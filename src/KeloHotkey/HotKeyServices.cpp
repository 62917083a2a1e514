#include "KeloHotkey/HotKeyServices.h"

#include "KeloHotkey/backends/PortalService.h"
#include "KeloHotkey/backends/X11GrabService.h"
#include "KeloHotkey/backends/X11Keyboard.h"

#include <QDBusConnection>
#include <QLoggingCategory>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(hotKeyLog, "kelo.hotkey")

/// Stands in where no shortcut can be registered, and says so once in the log.
class NoService final : public HotKeyService
{
public:
    explicit NoService(const HotKeyPurpose &purpose) { purpose.logAdvice(); }

    bool canRegister() const override { return false; }

    bool registerHotKey(const HotKeyCombo &, std::uint32_t) override { return false; }

    void unregisterHotKey(std::uint32_t) override {}

    void suspend() override {}

    void resume() override {}
};

} // namespace

void HotKeyPurpose::logAdvice() const
{
    qCInfo(hotKeyLog,
           "This session has no global shortcuts for applications. Bind \"%s\" to a key in the compositor.",
           qUtf8Printable(command));
}

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
