#pragma once

#include "KeloMenuBar/backends/BusTypes.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <QObject>
#include <QStringList>

/// A program that shows status items: speaks to them over the bus as panels do, one message after the other.
class FakeHost final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_draws)

public:
    /// Takes the watcher's name on a connection of its own; the name is given up at the end.
    explicit FakeHost(support::PrivateBus &bus, bool draws = true) : m_bus(bus.connection()), m_draws(draws)
    {
        kelo::registerBusTypes();
        m_bus.registerObject(m_watcherPath, this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
        m_bus.connect({}, m_itemPath, m_itemInterface, {}, this, SLOT(record(QDBusMessage)));
        m_bus.registerService(m_watcher);
    }

    ~FakeHost() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    /// What was registered with this host.
    QStringList registered;
    /// The names of the signals that the item has sent, in their order.
    QStringList signalNames;

    /// Whether it draws its items, or only keeps the list of them; says so when that changes.
    void setDraws(bool draws)
    {
        m_draws = draws;
        const auto change = draws ? QStringLiteral("StatusNotifierHostRegistered")
                                  : QStringLiteral("StatusNotifierHostUnregistered");
        m_bus.send(QDBusMessage::createSignal(m_watcherPath, m_watcher, change));
    }

    /// A panel that wants org.x.StatusIcon instead comes or goes.
    void setMonitor(bool isThere)
    {
        const auto name = QStringLiteral("org.x.StatusIconMonitor.panel");
        isThere ? m_bus.registerService(name) : m_bus.unregisterService(name);
    }

    /// Calls what that panel finds.
    QVariant icon(const char *path, const char *interface, const char *method, const QVariantList &arguments)
    {
        const QString service = QStringLiteral("org.x.StatusIcon.Mivora");
        return call(QLatin1String(path), QLatin1String(interface), method, arguments, service)
            .arguments()
            .value(0);
    }

    /// Calls the item, or its menu.
    QDBusMessage item(const char *method, const QVariantList &arguments)
    {
        return call(m_itemPath, m_itemInterface, method, arguments);
    }

    QDBusMessage menu(const char *method, const QVariantList &arguments)
    {
        return call(m_itemPath + QStringLiteral("/Menu"), QStringLiteral("com.canonical.dbusmenu"), method,
                    arguments);
    }

    /// A property of the item, as a panel reads it.
    QVariant property(const char *name)
    {
        const QDBusMessage reply = call(m_itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), "Get",
                                        {m_itemInterface, QLatin1String(name)});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

public Q_SLOTS:

    void RegisterStatusNotifierItem(const QString &service) { registered << service; }

private Q_SLOTS:

    void record(const QDBusMessage &message) { signalNames << message.member(); }

private:
    // Who answers may be in this thread: the event loop goes on.
    QDBusMessage call(const QString &path, const QString &interface, const char *method,
                      const QVariantList &arguments, const QString &service = {})
    {
        auto message = QDBusMessage::createMethodCall(service.isEmpty() ? registered.constLast() : service,
                                                      path, interface, QLatin1String(method));
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::BlockWithGui);
    }

    const QString m_watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    const QString m_watcherPath = QStringLiteral("/StatusNotifierWatcher");
    const QString m_itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
    const QString m_itemPath = QStringLiteral("/StatusNotifierItem");
    QDBusConnection m_bus;
    bool m_draws = true;
};
