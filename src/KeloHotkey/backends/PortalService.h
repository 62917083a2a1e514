#pragma once

#include "KeloHotkey/HotKeyServices.h"
#include "Platform/linux/PortalRequest.h"

#include <QDBusServiceWatcher>
#include <optional>

namespace kelo {

class GnomeKeybinding;
class PortalShortcut;

/// A shortcut through the desktop portal's org.freedesktop.portal.GlobalShortcuts. Where the portal doesn't
/// have that, one among GNOME's own keybindings, if it is GNOME.
///
/// Whether the portal has that interface is asked at the start and whenever the portal starts anew. A desktop
/// knows the shortcut by the name of its purpose, so there is one at a time, and remembers its keys: what the
/// desktop has bound counts, not what was wished for. Nothing here waits for the portal.
class PortalService final : public HotKeyService
{
    Q_OBJECT

public:
    PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus);
    ~PortalService() override;

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override;
    void unregisterHotKey(std::uint32_t id) override;
    void suspend() override;
    void resume() override;
    HotKeyState state() const override;
    void configure() override;

private Q_SLOTS:
    void onActivated(const QDBusMessage &message);
    void onShortcutsChanged(const QDBusMessage &message);
    void onSessionClosed(const QDBusMessage &message);

private:
    void probe();
    void setPeer(const std::optional<mivora::PortalPeer> &peer);
    void setState(const HotKeyState &state);
    void bind();
    bool bindInstead();
    bool isOurs(const QString &session) const;

    HotKeyPurpose m_purpose;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    std::optional<mivora::PortalPeer> m_peer;
    std::unique_ptr<GnomeKeybinding> m_instead;
    std::optional<HotKeyCombo> m_combo;
    std::uint32_t m_id = 0;
    std::unique_ptr<PortalShortcut> m_shortcut;
    /// Without a shortcut: whether one could be had.
    HotKeyState m_state;
    bool m_isSuspended = false;
};

} // namespace kelo
