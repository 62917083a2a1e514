#pragma once

#include "KeloHotkey/HotKey.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace mivora {

class Preferences;

/// Keeps the registered global shortcut in line with the setting. Main thread only.
class HotKeyRegistration final : public QObject
{
    Q_OBJECT

public:
    /// `action` runs at each press. Service and preferences must outlive this.
    HotKeyRegistration(kelo::HotKeyService &service, Preferences &prefs, std::function<void()> action,
                       QObject *parent = nullptr);

    /// Brings the registration in line. A combination that is taken is cleared from the settings and
    /// announced by conflict(). Where the desktop can register nothing, the setting stays as it is.
    void registerHotKey();

    /// Registers `combo` in place of the registered combination, for a setting that is about to be written.
    /// False, and everything stays as it is, when it is in use.
    bool tryToRegister(const kelo::HotKeyCombo &combo);

    /// The registered combination, if there is one.
    const std::optional<kelo::HotKeyCombo> &registeredCombo() const { return m_registeredCombo; }

Q_SIGNALS:
    /// Another program has the combination that is shown as `shortcut`.
    void conflict(const QString &shortcut);

private:
    kelo::HotKeyService &m_service;
    Preferences &m_prefs;
    std::function<void()> m_action;
    std::unique_ptr<kelo::HotKey> m_hotKey;
    std::optional<kelo::HotKeyCombo> m_registeredCombo;
};

} // namespace mivora
