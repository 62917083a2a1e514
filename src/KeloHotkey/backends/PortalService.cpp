#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QLoggingCategory>
#include <algorithm>
#include <utility>

namespace kelo {

using mivora::portalPath;
using mivora::PortalPeer;
using mivora::PortalRequest;
using mivora::portalService;

namespace {

Q_LOGGING_CATEGORY(hotKeyLog, "kelo.hotkey")

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");

/// An element of the list of shortcuts that BindShortcuts takes, a(sa{sv}).
struct PortalShortcutEntry
{
    QString name;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcutEntry &entry)
{
    argument.beginStructure();
    argument << entry.name << entry.properties;
    argument.endStructure();
    return argument;
}

// The type can only be registered with both directions.
const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcutEntry &entry)
{
    argument.beginStructure();
    argument >> entry.name >> entry.properties;
    argument.endStructure();
    return argument;
}

// Portals are documented to send the session as a text, but some send an object path.
QString sessionPath(const QVariant &handle)
{
    if (handle.metaType() == QMetaType::fromType<QDBusObjectPath>())
        return handle.value<QDBusObjectPath>().path();
    return handle.toString();
}

// Desktops remember the keys of a shortcut by its name and then ignore the wanted ones. With the combination
// in the name, another combination is another shortcut.
QString shortcutName(const HotKeyPurpose &purpose, const HotKeyCombo &combo)
{
    return QStringLiteral("%1-%2-%3").arg(purpose.name).arg(combo.keyCode).arg(combo.modifiers);
}

// The combination as the freedesktop "shortcuts" text: "SHIFT+LOGO+v". The key is named by what it types on
// the user's layout. Empty when it has no name.
QString portalTrigger(const HotKeyCombo &combo)
{
    // Combinations that can be registered have a key code of 16 bits.
    const QString key = KeyboardLayout::symbolName(std::uint16_t(combo.keyCode));
    if (key.isEmpty())
        return {};
    QStringList parts;
    if (combo.modifiers & controlKey)
        parts.append(QStringLiteral("CTRL"));
    if (combo.modifiers & optionKey)
        parts.append(QStringLiteral("ALT"));
    if (combo.modifiers & shiftKey)
        parts.append(QStringLiteral("SHIFT"));
    if (combo.modifiers & commandKey)
        parts.append(QStringLiteral("LOGO"));
    return (parts << key).join(QLatin1Char('+'));
}

} // namespace

/// One combination bound at the portal, in a session of its own: a session can be given shortcuts only once.
class PortalShortcut final : public QObject
{
public:
    PortalShortcut(const HotKeyCombo &combo, const HotKeyPurpose &purpose)
        : m_combo(combo), m_purpose(purpose)
    {
    }

    const HotKeyCombo &combo() const { return m_combo; }

    /// Empty while there is no session.
    const QString &session() const { return m_session; }

    /// Creates a session and binds the combination in it. The user may be asked. A former session is
    /// forgotten.
    void bind(const PortalPeer &peer);

    /// Ends the session. One that is just being created is ended when it is there.
    static void release(std::unique_ptr<PortalShortcut> shortcut);

private:
    void sessionCreated(const QVariantMap &results);
    void bindShortcut();
    void closeSession();

    HotKeyCombo m_combo;
    HotKeyPurpose m_purpose;
    std::optional<PortalPeer> m_peer;
    QString m_session;
    /// The session is being created: until it is there it can't be closed.
    bool m_isCreating = false;
    bool m_isReleased = false;
};

void PortalShortcut::bind(const PortalPeer &peer)
{
    qDeleteAll(findChildren<PortalRequest *>());
    m_peer = peer;
    m_session.clear();
    m_isCreating = true;
    auto *request = new PortalRequest(peer, this);
    connect(request, &PortalRequest::succeeded, this, &PortalShortcut::sessionCreated);
    connect(request, &PortalRequest::failed, this, [this] { sessionCreated({}); });
    QDBusMessage call = peer.call(portalPath, shortcutsInterface, QStringLiteral("CreateSession"));
    call << QVariantMap{{QStringLiteral("handle_token"), request->token()},
                        {QStringLiteral("session_handle_token"), PortalRequest::newToken()}};
    request->send(call);
}

void PortalShortcut::release(std::unique_ptr<PortalShortcut> shortcut)
{
    if (!shortcut->m_isCreating)
        return shortcut->closeSession();
    shortcut->m_isReleased = true;
    // It ends itself when its session is there.
    static_cast<void>(shortcut.release());
}

void PortalShortcut::sessionCreated(const QVariantMap &results)
{
    m_isCreating = false;
    m_session = sessionPath(results.value(QStringLiteral("session_handle")));
    if (m_isReleased) {
        closeSession();
        deleteLater();
    } else if (!m_session.isEmpty()) {
        bindShortcut();
    }
}

// A refusal by the user is final and no conflict: the desktop's own settings are the place to change it.
void PortalShortcut::bindShortcut()
{
    const QVariantMap properties{{QStringLiteral("description"), m_purpose.description},
                                 {QStringLiteral("preferred_trigger"), portalTrigger(m_combo)}};
    auto *request = new PortalRequest(*m_peer, this);
    QDBusMessage call = m_peer->call(portalPath, shortcutsInterface, QStringLiteral("BindShortcuts"));
    call << QVariant::fromValue(QDBusObjectPath(m_session))
         << QVariant::fromValue(QList<PortalShortcutEntry>{{shortcutName(m_purpose, m_combo), properties}})
         << QString() << QVariantMap{{QStringLiteral("handle_token"), request->token()}};
    request->send(call);
}

void PortalShortcut::closeSession()
{
    if (!m_session.isEmpty())
        m_peer->bus.send(m_peer->call(m_session, QStringLiteral("org.freedesktop.portal.Session"),
                                      QStringLiteral("Close")));
}

PortalService::PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus)
    : m_purpose(purpose), m_bus(bus), m_watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    qDBusRegisterMetaType<PortalShortcutEntry>();
    qDBusRegisterMetaType<QList<PortalShortcutEntry>>();
    // A portal that went away is started again by the next call; its shortcuts are back when it is.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                if (owner.isEmpty())
                    return;
                mivora::introduceToPortal(m_bus);
                probe();
            });
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
            qCInfo(hotKeyLog,
                   "This session has no global shortcuts for applications. Bind \"%s\" to a key in the "
                   "compositor.",
                   qUtf8Printable(m_purpose.command));
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
