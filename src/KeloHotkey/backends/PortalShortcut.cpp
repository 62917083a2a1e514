#include "KeloHotkey/backends/PortalShortcut.h"

#include "KeloHotkey/KeyboardLayout.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

namespace kelo {

using mivora::portalPath;
using mivora::PortalPeer;
using mivora::PortalRequest;

namespace {

/// An element of the list of shortcuts that BindShortcuts takes, a(sa{sv}).
struct PortalShortcutEntry
{
    QString name;
    QVariantMap properties;
};

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
    const QString key = KeyboardLayout::symbolName(static_cast<std::uint16_t>(combo.keyCode));
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

} // namespace

PortalShortcut::PortalShortcut(const HotKeyCombo &combo, const HotKeyPurpose &purpose)
    : m_combo(combo), m_purpose(purpose)
{
    qDBusRegisterMetaType<PortalShortcutEntry>();
    qDBusRegisterMetaType<QList<PortalShortcutEntry>>();
}

void PortalShortcut::bind(const PortalPeer &peer)
{
    qDeleteAll(findChildren<PortalRequest *>());
    m_peer = peer;
    m_session.clear();
    createSession();
}

void PortalShortcut::release(std::unique_ptr<PortalShortcut> shortcut)
{
    if (!shortcut->m_isCreating)
        return shortcut->closeSession();
    shortcut->m_isReleased = true;
    // It ends itself when its session is there.
    static_cast<void>(shortcut.release());
}

void PortalShortcut::createSession()
{
    m_isCreating = true;
    auto *request = new PortalRequest(*m_peer, this);
    connect(request, &PortalRequest::succeeded, this, &PortalShortcut::sessionCreated);
    connect(request, &PortalRequest::failed, this, [this] { sessionCreated({}); });
    QDBusMessage call = m_peer->call(portalPath, shortcutsInterface, QStringLiteral("CreateSession"));
    call << QVariantMap{{QStringLiteral("handle_token"), request->token()},
                        {QStringLiteral("session_handle_token"), PortalRequest::newToken()}};
    request->send(call);
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

} // namespace kelo
