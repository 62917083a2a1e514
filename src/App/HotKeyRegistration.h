#pragma once

#include "KeloHotkey/HotKey.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace mivora {

class Preferences;

/// Keeps the registered global shortcut in line with the setting, and knows how it stands with it. Main
/// thread only.
class HotKeyRegistration final : public QObject
{
    Q_OBJECT

public:
    /// `action` runs at each press. Service and preferences must outlive this.
    HotKeyRegistration(kelo::HotKeyService &service, Preferences &prefs, std::function<void()> action,
                       QObject *parent = nullptr);

    /// Brings the registration in line. A combination that is taken is cleared from the settings and
    /// announced by conflict(); one that the user declines when the desktop asks is cleared as well. Where
    /// the desktop can register nothing, the setting stays as it is.
    void registerHotKey();

    /// Registers `combo` in place of the registered combination, for a setting that is about to be written.
    /// False, and everything stays as it is, when it is in use.
    bool tryToRegister(const kelo::HotKeyCombo &combo);

    /// How it stands. Of a combination that was cleared, why that was.
    const kelo::HotKeyState &state() const { return m_state; }

Q_SIGNALS:
    void stateChanged();
    /// Another program has the combination that is shown as `shortcut`.
    void conflict(const QString &shortcut);

private:
    void follow();
    void giveUp(const kelo::HotKeyState &reason);
    void setState(const kelo::HotKeyState &state);

    kelo::HotKeyService &m_service;
    Preferences &m_prefs;
    std::function<void()> m_action;
    std::unique_ptr<kelo::HotKey> m_hotKey;
    /// What m_hotKey was made for.
    std::optional<kelo::HotKeyCombo> m_combo;
    kelo::HotKeyState m_state;
};

} // namespace mivora
