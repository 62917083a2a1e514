#include "Platform/linux/PortalRequest.h"

#include "Platform/linux/BusCall.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QUuid>

namespace mivora {

// Its refusal changes nothing: there is no other name to give.
void introduceToPortal(const QDBusConnection &bus)
{
    auto call = portalCall(portalPath, QStringLiteral("org.freedesktop.host.portal.Registry"),
                           QStringLiteral("Register"));
    bus.send(call << QStringLiteral("app.kelo.Mivora") << QVariantMap());
}

QDBusMessage portalCall(const QString &path, const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(portalService, path, interface, method);
}

void findPortal(const QDBusConnection &bus, const QString &interface, QObject *context,
                const std::function<void(std::optional<uint>)> &found)
{
    auto version =
        portalCall(portalPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    callBus<QDBusVariant>(bus, version << interface << QStringLiteral("version"), context,
                          [=](const QDBusPendingReply<QDBusVariant> &answer) {
                              found(answer.isError() ? std::nullopt
                                                     : std::optional(answer.value().variant().toUInt()));
                          });
}

PortalRequest::PortalRequest(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_bus(bus), m_token(newToken())
{
}

QString PortalRequest::newToken()
{
    return QStringLiteral("kelo_") + QUuid::createUuid().toString(QUuid::Id128);
}

void PortalRequest::send(const QDBusMessage &call)
{
    // The portal may answer before the call returns, so the place of its answer is worked out beforehand.
    QString sender = m_bus.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    m_bus.connect(portalService, QStringLiteral("%1/request/%2/%3").arg(portalPath, sender, m_token),
                  QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
                  SLOT(onResponse(QDBusMessage)));
    callBus<QDBusObjectPath>(m_bus, call, this, [this](const QDBusPendingReply<QDBusObjectPath> &reply) {
        if (!reply.isError())
            return;
        Q_EMIT answered(failed, {});
        deleteLater();
    });
}

void PortalRequest::onResponse(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 2)
        Q_EMIT answered(arguments[0].toUInt(), qdbus_cast<QVariantMap>(arguments[1]));
    else
        Q_EMIT answered(failed, {});
    deleteLater();
}

} // namespace mivora
