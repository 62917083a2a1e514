#include "Platform/linux/PortalRequest.h"

#include "Platform/linux/BusCall.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUuid>

namespace mivora {

// Its refusal changes nothing: there is no other name to give.
void introduceToPortal(const QDBusConnection &bus)
{
    auto call = QDBusMessage::createMethodCall(portalService, portalPath,
                                               QStringLiteral("org.freedesktop.host.portal.Registry"),
                                               QStringLiteral("Register"));
    bus.send(call << QStringLiteral("app.kelo.Mivora") << QVariantMap());
}

QDBusMessage PortalPeer::call(const QString &path, const QString &interface, const QString &method) const
{
    return QDBusMessage::createMethodCall(name, path, interface, method);
}

// Its version is asked for first, which starts it. Who answers is asked for by itself: Qt 6.8 doesn't tell
// the sender of a reply.
void findPortal(const QDBusConnection &bus, const QString &interface, QObject *context,
                const std::function<void(std::optional<PortalPeer>)> &found)
{
    auto version = QDBusMessage::createMethodCall(
        portalService, portalPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    version << interface << QStringLiteral("version");
    callBus<QDBusVariant>(bus, version, context, [=](const QDBusPendingReply<QDBusVariant> &answer) {
        if (answer.isError())
            return found(std::nullopt);
        const uint number = answer.value().variant().toUInt();
        const auto owned = [bus, found, number](const QDBusPendingReply<QString> &owner) {
            found(owner.isError() ? std::nullopt : std::optional(PortalPeer{bus, owner.value(), number}));
        };
        const QString daemon = QStringLiteral("org.freedesktop.DBus");
        auto owner = QDBusMessage::createMethodCall(daemon, QStringLiteral("/org/freedesktop/DBus"), daemon,
                                                    QStringLiteral("GetNameOwner"));
        owner << portalService;
        callBus<QString>(bus, owner, context, owned);
    });
}

PortalRequest::PortalRequest(const PortalPeer &peer, QObject *parent)
    : QObject(parent), m_peer(peer), m_token(newToken())
{
}

QString PortalRequest::newToken()
{
    return QStringLiteral("kelo_") + QUuid::createUuid().toString(QUuid::Id128);
}

void PortalRequest::send(const QDBusMessage &call)
{
    // The portal may answer before the call returns, so the place of its answer is worked out beforehand.
    QString sender = m_peer.bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    listenAt(QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, m_token));
    callBus<QDBusObjectPath>(m_peer.bus, call, this, [this](const QDBusPendingReply<QDBusObjectPath> &reply) {
        if (reply.isError()) {
            Q_EMIT answered(other, {});
            deleteLater();
        } else if (reply.value().path() != m_path) {
            // Portals before 0.9 put the request elsewhere.
            listenAt(reply.value().path());
        }
    });
}

void PortalRequest::listenAt(const QString &path)
{
    m_path = path;
    m_peer.bus.connect(m_peer.name, path, QStringLiteral("org.freedesktop.portal.Request"),
                       QStringLiteral("Response"), this, SLOT(onResponse(QDBusMessage)));
}

void PortalRequest::onResponse(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 2)
        Q_EMIT answered(arguments[0].toUInt(), qdbus_cast<QVariantMap>(arguments[1]));
    else
        Q_EMIT answered(other, {});
    deleteLater();
}

} // namespace mivora
