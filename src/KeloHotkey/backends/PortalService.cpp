#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/KeyboardLayout.h"
#include "KeloHotkey/VirtualKeys.h"
#include "KeloHotkey/backends/Accelerator.h"
#include "KeloHotkey/backends/GnomeKeybinding.h"
#include "Platform/Activation.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <algorithm>
#include <functional>
#include <utility>

namespace kelo {

using mivora::portalPath;
using mivora::PortalPeer;
using mivora::PortalRequest;
using mivora::portalService;
using enum HotKeyState::Kind;

namespace {

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

/// An element of the lists of shortcuts that the portal takes and gives, a(sa{sv}).
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

// GNOME 48 says "Press <Control><Alt>j", in its own language.
QString keysIn(const QString &description)
{
    const QString text = description.simplified();
    return text.contains(QLatin1Char('<')) ? Accelerator::words(text.mid(text.indexOf(QLatin1Char('<'))))
                                           : text;
}

HotKeyState stateAfter(uint answer)
{
    return {answer == PortalRequest::cancelled ? cancelled : refused};
}

} // namespace

/// A shortcut bound at the portal, in a session of its own: a session can be given shortcuts only once.
class PortalShortcut final : public QObject
{
public:
    using Listener = std::function<void(const HotKeyState &)>;

    /// `changed` is told how it stands, whenever that changes.
    PortalShortcut(PortalPeer peer, HotKeyPurpose purpose, Listener changed)
        : m_peer(std::move(peer)), m_purpose(std::move(purpose)), m_changed(std::move(changed))
    {
    }

    /// Empty while there is no session.
    const QString &session() const { return m_session; }

    /// Creates the session and binds the shortcut in it, if possible to the combination. The user may be
    /// asked.
    void bind(const HotKeyCombo &combo);

    /// Takes in what the desktop has bound. It decides, not whether the answer was a yes: GNOME 48 gives the
    /// shortcuts that the user has just added along with a refusal.
    void adopt(const QVariant &shortcuts, const HotKeyState &otherwise);

    /// Ends the session. One that is just being created is ended when it is there.
    static void release(std::unique_ptr<PortalShortcut> shortcut);

private:
    void sessionCreated(uint answer, const QVariantMap &results, const QString &trigger);
    void closeSession();

    PortalPeer m_peer;
    HotKeyPurpose m_purpose;
    Listener m_changed;
    QString m_session;
    /// The session is being created: until it is there it can't be closed.
    bool m_isCreating = false;
};

void PortalShortcut::bind(const HotKeyCombo &combo)
{
    m_isCreating = true;
    auto *request = new PortalRequest(m_peer, this);
    connect(request, &PortalRequest::answered, this,
            [this, trigger = portalTrigger(combo)](uint answer, const QVariantMap &results) {
                sessionCreated(answer, results, trigger);
            });
    QDBusMessage call = m_peer.call(portalPath, shortcutsInterface, QStringLiteral("CreateSession"));
    call << QVariantMap{{QStringLiteral("handle_token"), request->token()},
                        {QStringLiteral("session_handle_token"), PortalRequest::newToken()}};
    request->send(call);
}

void PortalShortcut::release(std::unique_ptr<PortalShortcut> shortcut)
{
    if (!shortcut)
        return;
    shortcut->m_changed = nullptr;
    if (!shortcut->m_isCreating)
        return shortcut->closeSession();
    // It ends itself when its session is there.
    static_cast<void>(shortcut.release());
}

void PortalShortcut::sessionCreated(uint answer, const QVariantMap &results, const QString &trigger)
{
    m_isCreating = false;
    m_session = sessionPath(results.value(QStringLiteral("session_handle")));
    if (!m_changed) {
        closeSession();
        return deleteLater();
    }
    if (m_session.isEmpty())
        return m_changed(stateAfter(answer));

    QVariantMap properties{{QStringLiteral("description"), m_purpose.description}};
    if (!trigger.isEmpty())
        properties.insert(QStringLiteral("preferred_trigger"), trigger);
    auto *request = new PortalRequest(m_peer, this);
    connect(request, &PortalRequest::answered, this, [this](uint code, const QVariantMap &bound) {
        const auto shortcuts = bound.value(QStringLiteral("shortcuts"));
        const bool isPlainYes = code == PortalRequest::done && !shortcuts.isValid();
        adopt(shortcuts,
              isPlainYes ? HotKeyState{.kind = registered, .areKeysOfDesktop = true} : stateAfter(code));
    });
    QDBusMessage call = m_peer.call(portalPath, shortcutsInterface, QStringLiteral("BindShortcuts"));
    call << QVariant::fromValue(QDBusObjectPath(m_session))
         << QVariant::fromValue(QList<PortalShortcutEntry>{{m_purpose.name, properties}}) << QString()
         << QVariantMap{{QStringLiteral("handle_token"), request->token()}};
    request->send(call);
}

void PortalShortcut::adopt(const QVariant &shortcuts, const HotKeyState &otherwise)
{
    const auto bound = qdbus_cast<QList<PortalShortcutEntry>>(shortcuts);
    const auto ours = std::ranges::find(bound, m_purpose.name, &PortalShortcutEntry::name);
    HotKeyState state = otherwise;
    if (ours != bound.end())
        state = {.kind = registered,
                 .keys = keysIn(ours->properties.value(QStringLiteral("trigger_description")).toString()),
                 .areKeysOfDesktop = true};
    state.isConfigurable = state.kind == registered && m_peer.version >= 2;
    if (m_changed)
        m_changed(state);
}

void PortalShortcut::closeSession()
{
    if (!m_session.isEmpty())
        m_peer.bus.send(m_peer.call(m_session, sessionInterface, QStringLiteral("Close")));
}

PortalService::PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus)
    : m_purpose(purpose), m_bus(bus), m_watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    qDBusRegisterMetaType<PortalShortcutEntry>();
    qDBusRegisterMetaType<QList<PortalShortcutEntry>>();
    m_bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("Activated"), this,
                  SLOT(onActivated(QDBusMessage)));
    m_bus.connect(portalService, portalPath, shortcutsInterface, QStringLiteral("ShortcutsChanged"), this,
                  SLOT(onShortcutsChanged(QDBusMessage)));
    m_bus.connect(portalService, {}, sessionInterface, QStringLiteral("Closed"), this,
                  SLOT(onSessionClosed(QDBusMessage)));
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                // Sessions end with the portal that they were in. It may be started again at any time.
                m_shortcut.reset();
                if (m_peer)
                    setState({m_combo ? ended : off});
                m_peer.reset();
                if (owner.isEmpty())
                    return;
                mivora::introduceToPortal(m_bus);
                probe();
            });
    probe();
}

PortalService::~PortalService()
{
    PortalShortcut::release(std::move(m_shortcut));
}

void PortalService::probe()
{
    mivora::findPortal(m_bus, shortcutsInterface, this,
                       [this](const std::optional<PortalPeer> &peer) { setPeer(peer); });
}

void PortalService::setPeer(const std::optional<PortalPeer> &peer)
{
    // It may have been asked twice.
    if (peer ? m_peer.has_value() : bool(m_instead))
        return;
    m_peer = peer;
    m_instead = m_peer ? nullptr : GnomeKeybinding::create(m_purpose);
    if (m_instead) {
        connect(m_instead.get(), &HotKeyService::pressed, this, &HotKeyService::pressed);
        connect(m_instead.get(), &HotKeyService::stateChanged, this, &HotKeyService::stateChanged);
    }
    setState({m_peer || m_instead ? off : impossible});
    if (m_combo)
        bind();
    else if (m_instead)
        GnomeKeybinding::forget(m_purpose); // The setting was changed while the program didn't run.
}

void PortalService::setState(const HotKeyState &state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

HotKeyState PortalService::state() const
{
    return m_instead && m_state.kind == off ? m_instead->state() : m_state;
}

bool PortalService::registerHotKey(const HotKeyCombo &combo, std::uint32_t id)
{
    if (m_combo == combo || !xKeyCode(combo.keyCode))
        return false;
    if (m_instead && !m_instead->registerHotKey(combo, id))
        return false;
    m_combo = combo;
    m_id = id;
    if (m_instead)
        return true;
    // A portal that has ended is started by being looked for.
    if (!m_peer)
        probe();
    bind();
    return true;
}

// A refusal by the user is final and no conflict: the desktop's own settings are the place to change it.
void PortalService::bind()
{
    PortalShortcut::release(std::move(m_shortcut));
    if (m_instead)
        return setState({m_instead->registerHotKey(*m_combo, m_id) ? off : taken, m_combo->text()});
    if (m_state.kind == impossible)
        return;
    setState({waiting});
    // Goes on when the portal is found.
    if (!m_peer)
        return;
    // That of a former version of the desktop would have the same keys.
    GnomeKeybinding::forget(m_purpose);
    m_shortcut = std::make_unique<PortalShortcut>(*m_peer, m_purpose,
                                                  [this](const HotKeyState &state) { setState(state); });
    m_shortcut->bind(*m_combo);
}

void PortalService::unregisterHotKey(std::uint32_t id)
{
    if (!m_combo || id != m_id)
        return;
    m_combo.reset();
    if (m_instead)
        m_instead->unregisterHotKey(id);
    PortalShortcut::release(std::move(m_shortcut));
    if (m_state.kind != impossible)
        setState({off});
}

void PortalService::suspend()
{
    m_isSuspended = true;
    if (m_instead)
        m_instead->suspend();
}

void PortalService::resume()
{
    m_isSuspended = false;
    if (m_instead)
        m_instead->resume();
}

void PortalService::configure()
{
    if (!m_state.isConfigurable)
        return;
    QDBusMessage call = m_peer->call(portalPath, shortcutsInterface, QStringLiteral("ConfigureShortcuts"));
    m_bus.send(call << QVariant::fromValue(QDBusObjectPath(m_shortcut->session())) << QString()
                    << QVariantMap());
}

bool PortalService::isOurs(const QString &session) const
{
    return m_shortcut && !session.isEmpty() && m_shortcut->session() == session;
}

// These take the messages as they are: Qt refuses to connect slots with D-Bus types that nothing has used
// before.
void PortalService::onActivated(const QDBusMessage &message)
{
    if (!isOurs(message.arguments().value(0).value<QDBusObjectPath>().path()) || m_isSuspended)
        return;
    const auto options = qdbus_cast<QVariantMap>(message.arguments().value(3));
    mivora::holdActivation({.token = options.value(QStringLiteral("activation_token")).toByteArray()});
    Q_EMIT pressed(m_id);
}

void PortalService::onShortcutsChanged(const QDBusMessage &message)
{
    if (isOurs(message.arguments().value(0).value<QDBusObjectPath>().path()))
        m_shortcut->adopt(message.arguments().value(1), {ended});
}

void PortalService::onSessionClosed(const QDBusMessage &message)
{
    if (!isOurs(message.path()))
        return;
    m_shortcut.reset();
    setState({ended});
}

} // namespace kelo
