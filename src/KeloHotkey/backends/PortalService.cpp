#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/VirtualKeys.h"
#include "KeloHotkey/backends/PortalShortcut.h"

#include <QDBusObjectPath>
#include <algorithm>
#include <utility>

namespace kelo {

using mivora::portalPath;
using mivora::PortalPeer;
using mivora::portalService;

PortalService::PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus)
    : m_purpose(purpose), m_bus(bus), m_watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { portalOwnerChanged(owner); });
    probe();
}

PortalService::~PortalService()
{
    for (auto &[id, shortcut] : m_shortcuts)
        PortalShortcut::release(std::move(shortcut));
}

void PortalService::probe()
{
    mivora::findPortal(m_bus, shortcutsInterface, this, [this](const std::optional<PortalPeer> &peer) {
        setPeer(peer);
        if (!peer && !std::exchange(m_hasAdvised, true))
            m_purpose.logAdvice();
    });
}

void PortalService::setPeer(std::optional<PortalPeer> peer)
{
    const QString formerName = m_peer ? m_peer->name : QString();
    const QString name = peer ? peer->name : QString();
    if (name == formerName)
        return;
    m_peer = std::move(peer);
    if (m_peer) {
        m_bus.connect(name, portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
                      SLOT(onActivated(QDBusMessage)));
        // Sessions end with the portal that they were in.
        for (const auto &[id, shortcut] : m_shortcuts)
            shortcut->bind(*m_peer);
    }
    if (name.isEmpty() != formerName.isEmpty())
        Q_EMIT availabilityChanged();
}

void PortalService::portalOwnerChanged(const QString &owner)
{
    // A portal that went away is started again by the next call; its shortcuts are back when it is.
    if (!owner.isEmpty())
        probe();
}

bool PortalService::registerHotKey(const HotKeyCombo &combo, std::uint32_t id)
{
    const bool isTaken = std::ranges::any_of(
        m_shortcuts, [&](const auto &registered) { return registered.second->combo() == combo; });
    if (!m_peer || isTaken || !xKeyCode(combo.keyCode))
        return false;
    const auto added = m_shortcuts.emplace(id, std::make_unique<PortalShortcut>(combo, m_purpose)).first;
    added->second->bind(*m_peer);
    return true;
}

void PortalService::unregisterHotKey(std::uint32_t id)
{
    const auto found = m_shortcuts.find(id);
    if (found == m_shortcuts.end())
        return;
    PortalShortcut::release(std::move(found->second));
    m_shortcuts.erase(found);
}

// Takes the message as it is: Qt refuses to connect slots with D-Bus types that nothing has used before.
void PortalService::onActivated(const QDBusMessage &message)
{
    const QString session = message.arguments().value(0).value<QDBusObjectPath>().path();
    const auto found = std::ranges::find_if(
        m_shortcuts, [&](const auto &registered) { return registered.second->session() == session; });
    if (found != m_shortcuts.end() && !m_isSuspended)
        Q_EMIT pressed(found->first);
}

} // namespace kelo
