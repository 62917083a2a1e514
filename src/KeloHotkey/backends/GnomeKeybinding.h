#pragma once

#include "KeloHotkey/HotKeyServices.h"

#include <functional>
#include <memory>

namespace kelo {

class GnomeSettings;

/// The combination of an accelerator, keys as GTK writes them: "<Control><Alt>j", in any of the forms that
/// desktops write. Nothing for other texts, and when no key of the user's layout types it.
std::optional<HotKeyCombo> comboOfAccelerator(const QString &text);

/// An entry among the custom keybindings of GNOME's settings daemon that runs the command of the purpose:
/// for versions of GNOME whose portal has no shortcuts, and for desktops that have kept its daemon.
///
/// It is one entry, at a place of its own among those of the user. It stays when the program ends, and is
/// found again.
class GnomeKeybinding final
{
public:
    /// `changed` is called whenever the user changes something in the settings of the desktop. Null where the
    /// session has no such keybindings, or a sandbox keeps them away.
    static std::unique_ptr<GnomeKeybinding> create(const HotKeyPurpose &purpose,
                                                   std::function<void()> changed = {});

    ~GnomeKeybinding();
    Q_DISABLE_COPY_MOVE(GnomeKeybinding)

    /// Whether there is an entry, from this run of the program or a former one.
    bool exists() const;

    /// Makes the entry, or changes it. False, and nothing is changed, when the desktop uses the combination
    /// for something else, or it has no name.
    bool set(const HotKeyCombo &combo);

    /// Takes the keys from the entry, or gives it those of the combination.
    void setKeys(const std::optional<HotKeyCombo> &combo);

    /// Does nothing when there is no entry.
    void remove();

    /// How it stands with the entry, which was made for the combination.
    HotKeyState state(const HotKeyCombo &combo) const;

private:
    GnomeKeybinding(const HotKeyPurpose &purpose, std::function<void()> changed);

    bool isUsed(const HotKeyCombo &combo) const;
    void setEntries(const QStringList &paths);

    HotKeyPurpose m_purpose;
    std::function<void()> m_changed;
    /// The path of the entry.
    QString m_path;
    std::unique_ptr<GnomeSettings> m_daemon;
    std::unique_ptr<GnomeSettings> m_entry;
};

} // namespace kelo
