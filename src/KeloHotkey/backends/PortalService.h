#pragma once

#include "KeloHotkey/HotKeyServices.h"
#include "KeloHotkey/backends/GnomeKeybinding.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <chrono>
#include <optional>

namespace kelo {

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

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override;
    void unregisterHotKey(std::uint32_t id) override;
    void suspend() override;
    void resume() override;
    HotKeyState state() const override;
    void configure() override;

    /// Who says no sooner than this has not been asked: then it is a failure of the desktop, which GNOME 48
    /// doesn't tell from the user's no.
    std::chrono::milliseconds reactionTime{700};

private Q_SLOTS:
    void onSignal(const QDBusMessage &message);

private:
    void probe();
    void setVersion(std::optional<uint> version);
    void setState(const HotKeyState &state);
    void bind();
    void bindIn(const QString &session);
    void adopt(const QVariant &shortcuts, const HotKeyState &otherwise);
    void leave();
    void leave(const QString &session);

    HotKeyPurpose m_purpose;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher;
    /// Of the portal's interface; nothing while there is none.
    std::optional<uint> m_version;
    std::unique_ptr<GnomeKeybinding> m_instead;
    std::optional<HotKeyCombo> m_combo;
    std::uint32_t m_id = 0;
    /// Of the shortcut, a session being able to have shortcuts bound but once. Empty while there is none.
    QString m_session;
    /// Which answers are for it.
    int m_attempt = 0;
    /// With a keybinding of GNOME's: `off`, unless that is taken.
    HotKeyState m_state;
    bool m_isSuspended = false;
};

} // namespace kelo
