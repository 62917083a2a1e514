#include "support/FakePortal.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace support {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

QString pathOf(const char *kind, const QDBusMessage &message, const QVariant &token)
{
    QString sender = message.service().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    return QStringLiteral("%1/%2/%3/%4").arg(portalPath, QLatin1String(kind), sender, token.toString());
}

} // namespace

FakePortal::FakePortal(const QDBusConnection &bus, Shortcuts shortcuts) : m_bus(bus), m_shortcuts(shortcuts)
{
    m_bus.registerVirtualObject(portalPath, this, QDBusConnection::SubPath);
    m_bus.registerService(serviceName);
}

FakePortal::~FakePortal()
{
    m_bus.unregisterObject(portalPath, QDBusConnection::UnregisterTree);
    m_bus.unregisterService(serviceName);
}

void FakePortal::activate(const QString &session)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        portalPath, QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("Activated"));
    signal << QVariant::fromValue(QDBusObjectPath(session)) << QString() << qulonglong{0} << QVariantMap();
    m_bus.send(signal);
}

bool FakePortal::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    if (m_shortcuts == Shortcuts::Missing)
        return false;
    m_bus.send(message.createReply(reply(message)));
    return true;
}

QVariantList FakePortal::reply(const QDBusMessage &message)
{
    if (message.member() == QLatin1String("CreateSession"))
        return createSession(message);
    if (message.member() == QLatin1String("BindShortcuts"))
        return bindShortcuts(message);
    if (message.member() == QLatin1String("RequestBackground"))
        return requestBackground(message);
    if (message.member() == QLatin1String("Close")) {
        closed.append(message.path());
        return {};
    }
    return {QVariant::fromValue(QDBusVariant(1u))};
}

QVariantList FakePortal::createSession(const QDBusMessage &message)
{
    const auto options = qdbus_cast<QVariantMap>(message.arguments().at(0));
    const QString session = pathOf("session", message, options.value(QStringLiteral("session_handle_token")));
    return respond(message, options, 0, {{QStringLiteral("session_handle"), session}});
}

QVariantList FakePortal::bindShortcuts(const QDBusMessage &message)
{
    Bound shortcut;
    shortcut.session = message.arguments().at(0).value<QDBusObjectPath>().path();
    QVariantMap properties;
    const auto list = message.arguments().at(1).value<QDBusArgument>();
    list.beginArray();
    list.beginStructure();
    list >> shortcut.name >> properties;
    list.endStructure();
    list.endArray();
    shortcut.description = properties.value(QStringLiteral("description")).toString();
    shortcut.trigger = properties.value(QStringLiteral("preferred_trigger")).toString();
    bound.push_back(shortcut);
    return respond(message, qdbus_cast<QVariantMap>(message.arguments().at(3)), bindResponse, {});
}

QVariantList FakePortal::requestBackground(const QDBusMessage &message)
{
    const auto options = qdbus_cast<QVariantMap>(message.arguments().at(1));
    backgroundRequests.push_back(options);
    const QString autostart = QStringLiteral("autostart");
    return respond(message, options, backgroundResponse,
                   {{QStringLiteral("background"), true}, {autostart, options.value(autostart)}});
}

// The response goes out before the call is answered, as the real portal may do it.
QVariantList FakePortal::respond(const QDBusMessage &message, const QVariantMap &options, uint response,
                                 const QVariantMap &results)
{
    const QString path = pathOf("request", message, options.value(QStringLiteral("handle_token")));
    QDBusMessage signal = QDBusMessage::createTargetedSignal(message.service(), path,
                                                             QStringLiteral("org.freedesktop.portal.Request"),
                                                             QStringLiteral("Response"));
    signal << response << results;
    m_bus.send(signal);
    return {QVariant::fromValue(QDBusObjectPath(path))};
}

} // namespace support
