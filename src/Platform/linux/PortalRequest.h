#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>
#include <functional>
#include <optional>

namespace mivora {

/// Where the desktop portal is found on the session bus.
inline const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");

/// Tells the portal on `bus` which program this is, by org.freedesktop.host.portal.Registry: portals
/// from 1.21 on serve no program that they can't name. They believe it only before any other call of theirs
/// on the same connection, and forget it when they end. A portal without a registry finds out by itself, or
/// not at all.
void introduceToPortal(const QDBusConnection &bus);

/// A call of an object of the portal.
QDBusMessage portalCall(const QString &path, const QString &interface, const QString &method);

/// Finds the version of an interface of the portal, which is started if need be. `found` is called once, with
/// nothing when there is none; not at all when `context` is gone by then.
void findPortal(const QDBusConnection &bus, const QString &interface, QObject *context,
                const std::function<void(std::optional<uint>)> &found);

/// One call of a portal method that is answered by a Response signal (org.freedesktop.portal.Request).
/// Deletes itself when it is over.
class PortalRequest final : public QObject
{
    Q_OBJECT

public:
    PortalRequest(const QDBusConnection &bus, QObject *parent);

    /// For the option "handle_token" of the call.
    const QString &token() const { return m_token; }

    /// Makes the call.
    void send(const QDBusMessage &call);

    /// A token that no one else uses.
    static QString newToken();

    /// What Response begins with, and `failed` of a call that had no such answer.
    enum Answer : uint { done, cancelled, other, failed };

Q_SIGNALS:
    /// The portal, or the user, has answered: `done`, `cancelled` by the user, or `other`; or the call
    /// failed.
    void answered(uint answer, const QVariantMap &results);

private Q_SLOTS:
    void onResponse(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    QString m_token;
};

} // namespace mivora
