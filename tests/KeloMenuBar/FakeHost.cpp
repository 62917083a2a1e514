#include "FakeHost.h"

#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QDBusPendingReply>

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
constexpr char itemInterface[] = "org.kde.StatusNotifierItem";

} // namespace

FakeHost::FakeHost(support::PrivateBus &bus, bool draws) : m_bus(bus.connection()), m_draws(draws)
{
    kelo::registerBusTypes();
    m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    m_bus.connect({}, QStringLiteral("/StatusNotifierItem"), QLatin1String(itemInterface), {}, this,
                  SLOT(record(QDBusMessage)));
    m_bus.registerService(watcher);
}

FakeHost::~FakeHost()
{
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void FakeHost::setDraws(bool draws)
{
    m_draws = draws;
    m_bus.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"), watcher,
                                          draws ? QStringLiteral("StatusNotifierHostRegistered")
                                                : QStringLiteral("StatusNotifierHostUnregistered")));
}

QDBusMessage FakeHost::item(const char *method, const QVariantList &arguments)
{
    return call("/StatusNotifierItem", itemInterface, method, arguments);
}

QDBusMessage FakeHost::menu(const char *method, const QVariantList &arguments)
{
    return call("/StatusNotifierItem/Menu", "com.canonical.dbusmenu", method, arguments);
}

QVariant FakeHost::property(const char *name)
{
    const QDBusMessage reply = call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                                    {QLatin1String(itemInterface), QLatin1String(name)});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

kelo::DBusMenuLayout FakeHost::open()
{
    menu("AboutToShow", {0});
    const QDBusMessage reply = menu("GetLayout", {0, -1, QStringList()});
    return qdbus_cast<kelo::DBusMenuLayout>(reply.arguments().value(1));
}

void FakeHost::click(int id)
{
    menu("Event", {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
}

// Who answers may be in this thread: the event loop goes on.
QDBusMessage FakeHost::call(const char *path, const char *interface, const char *method,
                            const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(registered.constLast(), QLatin1String(path),
                                                  QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    return m_bus.call(message, QDBus::BlockWithGui);
}
