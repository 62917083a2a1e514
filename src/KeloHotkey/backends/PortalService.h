#pragma once

#include "KeloHotkey/HotKeyServices.h"
#include "Platform/linux/PortalRequest.h"

#include <QDBusServiceWatcher>
#include <map>
#include <optional>

namespace kelo {

class PortalShortcut;

/// Shortcuts through the desktop portal's org.freedesktop.portal.GlobalShortcuts.
///
/// Whether the portal has that interface is asked at the start and whenever the portal starts anew; until it
/// says yes nothing can be registered. Nothing here waits for the portal.
class PortalService final : public HotKeyService
{
    Q_OBJECT

public:
    PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus);
    ~PortalService() override;

    bool canRegister() const override { return m_peer.has_value(); }

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override;
    void unregisterHotKey(std::uint32_t id) override;

    void suspend() override { m_isSuspended = true; }

    void resume() override { m_isSuspended = false; }

private Q_SLOTS:
    void onActivated(const QDBusMessage &message);

private:
    void probe();
    void setPeer(std::optional<mivora::PortalPeer> peer);

    HotKeyPurpose m_purpose;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    std::optional<mivora::PortalPeer> m_peer;
    std::map<std::uint32_t, std::unique_ptr<PortalShortcut>> m_shortcuts;
    bool m_isSuspended = false;
    bool m_hasAdvised = false;
};

} // namespace kelo
