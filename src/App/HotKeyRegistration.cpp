#include "App/HotKeyRegistration.h"

#include "Preferences/Preferences.h"

namespace mivora {

HotKeyRegistration::HotKeyRegistration(kelo::HotKeyService &service, Preferences &prefs,
                                       std::function<void()> action, QObject *parent)
    : QObject(parent), m_service(service), m_prefs(prefs), m_action(std::move(action))
{
    connect(&m_prefs, &Preferences::joinHotKeyWasSet, this, &HotKeyRegistration::registerHotKey);
    connect(&m_service, &kelo::HotKeyService::availabilityChanged, this, &HotKeyRegistration::registerHotKey);
}

void HotKeyRegistration::registerHotKey()
{
    const auto wanted = m_prefs.joinHotKey();
    if (wanted == m_registeredCombo)
        return;
    m_hotKey.reset();
    m_registeredCombo.reset();
    if (!wanted || !m_service.canRegister())
        return;

    if (tryToRegister(*wanted))
        return;
    m_prefs.setJoinHotKey(std::nullopt);
    Q_EMIT conflict(wanted->displayString());
}

bool HotKeyRegistration::tryToRegister(const kelo::HotKeyCombo &combo)
{
    // Where the desktop can register nothing, no combination is in use.
    if (combo == m_registeredCombo || !m_service.canRegister())
        return true;
    auto hotKey = kelo::HotKey::create(m_service, combo, m_action);
    if (!hotKey)
        return false;
    m_hotKey = std::move(hotKey);
    m_registeredCombo = combo;
    return true;
}

} // namespace mivora
