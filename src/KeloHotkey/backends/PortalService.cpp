#include "KeloHotkey/backends/PortalService.h"

#include "KeloHotkey/VirtualKeys.h"
#include "Platform/Activation.h"
#include "Platform/linux/PortalRequest.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <algorithm>
#include <tuple>
#include <utility>

namespace kelo {

using mivora::portalCall;
using mivora::portalPath;
using mivora::PortalRequest;
using mivora::portalService;
using enum HotKeyState::Kind;

namespace {

const QString shortcutsInterface = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
const QString sessionInterface = QStringLiteral("org.freedesktop.portal.Session");

/// An element of the lists of shortcuts that the portal takes and gives, a(sa{sv}).
struct PortalShortcut
{
    QString name;
    QVariantMap properties;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PortalShortcut &entry)
{
    argument.beginStructure();
    argument << entry.name << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PortalShortcut &entry)
{
    argument.beginStructure();
    argument >> entry.name >> entry.properties;
    argument.endStructure();
    return argument;
}

// GNOME 48 says "Press <Control><Alt>j", in its own language.
QString keysIn(const QString &description)
{
    const QString text = description.simplified();
    const auto combo = comboOfAccelerator(text.mid(text.indexOf(QLatin1Char('<'))));
    return combo ? combo->text() : text;
}

} // namespace

PortalService::PortalService(const HotKeyPurpose &purpose, const QDBusConnection &bus)
    : m_purpose(purpose), m_bus(bus), m_watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
    for (const auto &[path, interface, signal] :
         {std::tuple(portalPath, shortcutsInterface, QStringLiteral("Activated")),
          {portalPath, shortcutsInterface, QStringLiteral("ShortcutsChanged")},
          {QString(), sessionInterface, QStringLiteral("Closed")}})
        m_bus.connect(portalService, path, interface, signal, this, SLOT(onSignal(QDBusMessage)));
    // With the program only the setting stays: a keybinding, and what the portal remembers.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, [this] { m_combo.reset(); });
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) {
                // Sessions end with the portal that they were in. It may be started again at any time.
                const bool wasThere = m_version.has_value();
                m_version.reset();
                m_session.clear();
                ++m_attempt;
                if (wasThere)
                    setState({m_combo ? ended : off});
                if (owner.isEmpty())
                    return;
                mivora::introduceToPortal(m_bus);
                probe();
            });
    probe();
}

void PortalService::probe()
{
    mivora::findPortal(m_bus, shortcutsInterface, this,
                       [this](std::optional<uint> version) { setVersion(version); });
}

void PortalService::setVersion(std::optional<uint> version)
{
    // It may have been asked twice.
    if (version ? m_version.has_value() : bool(m_instead))
        return;
    m_version = version;
    m_instead = m_version ? nullptr : GnomeKeybinding::create(m_purpose, [this] { Q_EMIT stateChanged(); });
    setState({m_version || m_instead ? off : impossible});
    if (m_combo)
        bind();
    else if (m_instead)
        m_instead->remove(); // The setting was changed while the program didn't run.
}

void PortalService::setState(const HotKeyState &state)
{
    m_state = state;
    Q_EMIT stateChanged();
}

HotKeyState PortalService::state() const
{
    if (!m_instead || !m_combo || m_state.kind != off)
        return m_state;
    return m_isSuspended ? HotKeyState{registered, m_combo->text()} : m_instead->state(*m_combo);
}

bool PortalService::registerHotKey(const HotKeyCombo &combo, std::uint32_t id)
{
    if (m_combo == combo || !xKeyCode(combo.keyCode))
        return false;
    if (m_instead && !m_instead->set(combo)) {
        // The desktop has come to use keys that the entry of a former run has.
        if (!m_combo)
            m_instead->remove();
        return false;
    }
    m_combo = combo;
    m_id = id;
    if (m_instead) {
        setState({off});
        return true;
    }
    // A portal that has ended is started by being looked for.
    if (!m_version)
        probe();
    bind();
    return true;
}

void PortalService::bind()
{
    leave();
    if (m_instead)
        return setState({m_instead->set(*m_combo) ? off : taken, m_combo->text()});
    if (m_state.kind == impossible)
        return;
    setState({waiting});
    // Goes on when the portal is found.
    if (!m_version)
        return;
    // That of a former version of the desktop would have the same keys.
    if (const auto former = GnomeKeybinding::create(m_purpose))
        former->remove();
    auto *request = new PortalRequest(m_bus, this);
    connect(request, &PortalRequest::answered, this,
            [this, attempt = m_attempt](uint, const QVariantMap &results) {
                const QString session = results.value(QStringLiteral("session_handle")).toString();
                if (attempt != m_attempt)
                    leave(session);
                else if (session.isEmpty())
                    setState({refused});
                else
                    bindIn(m_session = session);
            });
    QDBusMessage call = portalCall(portalPath, shortcutsInterface, QStringLiteral("CreateSession"));
    request->send(call << QVariantMap{{QStringLiteral("handle_token"), request->token()},
                                      {QStringLiteral("session_handle_token"), PortalRequest::newToken()}});
}

void PortalService::bindIn(const QString &session)
{
    auto *request = new PortalRequest(m_bus, this);
    QElapsedTimer asked;
    asked.start();
    connect(request, &PortalRequest::answered, this,
            [this, session, asked](uint answer, const QVariantMap &results) {
                if (session != m_session)
                    return;
                const QVariant shortcuts = results.value(QStringLiteral("shortcuts"));
                const bool isByUser =
                    answer == PortalRequest::cancelled ||
                    (answer != PortalRequest::failed && asked.hasExpired(reactionTime.count()));
                if (answer == PortalRequest::done && !shortcuts.isValid())
                    setState({.kind = registered, .areKeysOfDesktop = true});
                else
                    adopt(shortcuts, {isByUser ? cancelled : refused});
            });
    QVariantMap properties{{QStringLiteral("description"), m_purpose.description}};
    const QString trigger = m_combo->keysIn("CTRL ALT SHIFT LOGO").join(QLatin1Char('+'));
    if (!trigger.isEmpty())
        properties.insert(QStringLiteral("preferred_trigger"), trigger);
    QDBusMessage call = portalCall(portalPath, shortcutsInterface, QStringLiteral("BindShortcuts"));
    request->send(call << QVariant::fromValue(QDBusObjectPath(session))
                       << QVariant::fromValue(QList<PortalShortcut>{{m_purpose.name, properties}})
                       << QString() << QVariantMap{{QStringLiteral("handle_token"), request->token()}});
}

// The list decides, not whether the answer was a yes: GNOME 48 gives the shortcuts that the user has just
// added along with a refusal.
void PortalService::adopt(const QVariant &shortcuts, const HotKeyState &otherwise)
{
    const auto bound = qdbus_cast<QList<PortalShortcut>>(shortcuts);
    const auto ours = std::ranges::find(bound, m_purpose.name, &PortalShortcut::name);
    if (ours == bound.end())
        return setState(otherwise);
    setState({.kind = registered,
              .keys = keysIn(ours->properties.value(QStringLiteral("trigger_description")).toString()),
              .areKeysOfDesktop = true,
              .isConfigurable = m_version >= 2u});
}

// One that is just being created is left when it is there.
void PortalService::leave()
{
    ++m_attempt;
    leave(std::exchange(m_session, {}));
}

void PortalService::leave(const QString &session)
{
    if (!session.isEmpty())
        m_bus.send(portalCall(session, sessionInterface, QStringLiteral("Close")));
}

void PortalService::unregisterHotKey(std::uint32_t id)
{
    if (!m_combo || id != m_id)
        return;
    m_combo.reset();
    if (m_instead)
        m_instead->remove();
    leave();
    if (m_state.kind != impossible)
        setState({off});
}

void PortalService::suspend()
{
    m_isSuspended = true;
    if (m_instead && m_combo)
        m_instead->setKeys({});
}

void PortalService::resume()
{
    m_isSuspended = false;
    if (m_instead && m_combo)
        m_instead->setKeys(m_combo);
}

void PortalService::configure()
{
    if (!m_state.isConfigurable)
        return;
    QDBusMessage call = portalCall(portalPath, shortcutsInterface, QStringLiteral("ConfigureShortcuts"));
    m_bus.send(call << QVariant::fromValue(QDBusObjectPath(m_session)) << QString() << QVariantMap());
}

// Takes the messages as they are: Qt refuses to connect slots with D-Bus types that nothing has used before.
void PortalService::onSignal(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    const bool isEnd = message.member() == QLatin1String("Closed");
    const QString session = isEnd ? message.path() : arguments.value(0).value<QDBusObjectPath>().path();
    if (session.isEmpty() || session != m_session)
        return;
    if (isEnd) {
        m_session.clear();
        setState({ended});
    } else if (message.member() == QLatin1String("ShortcutsChanged")) {
        adopt(arguments.value(1), {ended});
    } else if (!m_isSuspended) {
        const auto options = qdbus_cast<QVariantMap>(arguments.value(3));
        mivora::holdActivation({.token = options.value(QStringLiteral("activation_token")).toByteArray()});
        Q_EMIT pressed(m_id);
    }
}

} // namespace kelo
