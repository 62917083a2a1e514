#pragma once

#include "KeloHotkey/HotKeyServices.h"

#include <optional>

namespace kelo {

class GnomeSettings;

/// A shortcut among the custom keybindings of GNOME's settings daemon, which runs the command of the purpose:
/// for versions of GNOME whose portal has no shortcuts, and for desktops that have kept its daemon.
///
/// There is one entry, at a place of its own among those of the user. It stays when the program ends, and is
/// found again.
class GnomeKeybinding final : public HotKeyService
{
    Q_OBJECT

public:
    /// Null where the session has no such keybindings, or a sandbox keeps them away.
    static std::unique_ptr<GnomeKeybinding> create(const HotKeyPurpose &purpose);

    /// Removes the entry if there is one.
    static void forget(const HotKeyPurpose &purpose);

    ~GnomeKeybinding() override;

    /// Whether a run of the program has left its entry.
    bool hasEntry() const;

    bool registerHotKey(const HotKeyCombo &combo, std::uint32_t id) override;
    void unregisterHotKey(std::uint32_t id) override;
    void suspend() override;
    void resume() override;
    HotKeyState state() const override;

private:
    explicit GnomeKeybinding(const HotKeyPurpose &purpose);

    bool isUsed(const HotKeyCombo &combo) const;
    void removeEntry();

    HotKeyPurpose m_purpose;
    /// The path of the entry.
    QString m_path;
    std::unique_ptr<GnomeSettings> m_daemon;
    std::unique_ptr<GnomeSettings> m_entry;
    std::optional<HotKeyCombo> m_combo;
    std::uint32_t m_id = 0;
    bool m_isSuspended = false;
};

} // namespace kelo
