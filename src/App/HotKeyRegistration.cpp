#include "App/HotKeyRegistration.h"

#include "Platform/SystemLog.h"
#include "Preferences/Preferences.h"

#include <QMetaEnum>

namespace mivora {

namespace {

using kelo::HotKeyState;
using enum HotKeyState::Kind;

} // namespace

HotKeyRegistration::HotKeyRegistration(kelo::HotKeyService &service, Preferences &prefs,
                                       std::function<void()> action, QObject *parent)
    : QObject(parent), m_service(service), m_prefs(prefs), m_action(std::move(action))
{
    connect(&m_prefs, &Preferences::joinHotKeyWasSet, this, &HotKeyRegistration::registerHotKey);
    // What follows may unregister, which the service doesn't expect in between.
    connect(&m_service, &kelo::HotKeyService::stateChanged, this, &HotKeyRegistration::follow,
            Qt::QueuedConnection);
}

void HotKeyRegistration::registerHotKey()
{
    const auto wanted = m_prefs.joinHotKey();
    if (wanted == m_combo)
        return;
    m_hotKey.reset();
    m_combo.reset();
    if (!wanted)
        setState(m_service.state());
    else if (!tryToRegister(*wanted))
        giveUp({.kind = taken, .keys = wanted->text()});
}

bool HotKeyRegistration::tryToRegister(const kelo::HotKeyCombo &combo)
{
    if (combo == m_combo)
        return true;
    auto hotKey = kelo::HotKey::create(m_service, combo, m_action);
    if (!hotKey)
        return false;
    m_hotKey = std::move(hotKey);
    m_combo = combo;
    setState(m_service.state());
    return true;
}

void HotKeyRegistration::follow()
{
    const HotKeyState state = m_service.state();
    const bool isGivenUp = !m_combo && (m_state.kind == taken || m_state.kind == cancelled);
    if (isGivenUp && state.kind == off)
        return;
    // Keys that worked may be had again; others are somebody else's for good.
    const bool wasNeverHad = state.kind == taken && m_state.kind == waiting;
    if (m_combo && (wasNeverHad || state.kind == cancelled))
        giveUp(state);
    else
        setState(state);
}

void HotKeyRegistration::giveUp(const HotKeyState &reason)
{
    m_prefs.setJoinHotKey(std::nullopt);
    setState(reason);
    if (reason.kind == taken)
        Q_EMIT conflict(reason.keys);
}

void HotKeyRegistration::setState(const HotKeyState &state)
{
    if (state == m_state)
        return;
    m_state = state;
    const QString keys = state.keys.isEmpty() ? QString() : QLatin1String(": ") + state.keys;
    const auto *kind = QMetaEnum::fromType<HotKeyState::Kind>().valueToKey(int(state.kind));
    writeToSystemLog(QLatin1String("Mivora: shortcut ") + QLatin1String(kind) + keys);
    Q_EMIT stateChanged();
}

} // namespace mivora
