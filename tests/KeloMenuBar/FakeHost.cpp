#include "FakeHost.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QDeadlineTimer>

namespace {

const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");

/// Milliseconds: a menu of thousands takes its time with sanitizers on a busy machine.
constexpr int patience = 60'000;

} // namespace

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(patience);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 50);
    return condition();
}

FakeHost::FakeHost(support::PrivateBus &bus, bool draws) : m_bus(bus.connection()), m_draws(draws)
{
    kelo::registerBusTypes();
    m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
    m_bus.connect({}, QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"), {},
                  this, SLOT(record(QDBusMessage)));
    m_bus.registerService(watcher);
}

FakeHost::~FakeHost()
{
    m_bus.unregisterService(watcher);
    m_bus.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void FakeHost::RegisterStatusNotifierItem(const QString &service)
{
    registered << service;
}

void FakeHost::record(const QDBusMessage &message)
{
    signalNames << message.member();
}

void FakeHost::setDraws(bool draws)
{
    m_draws = draws;
    m_bus.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"), watcher,
                                          draws ? QStringLiteral("StatusNotifierHostRegistered")
                                                : QStringLiteral("StatusNotifierHostUnregistered")));
}

QVariant FakeHost::property(const char *name)
{
    const QDBusMessage reply = call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                                    {QStringLiteral("org.kde.StatusNotifierItem"), QLatin1String(name)});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QDBusMessage FakeHost::menu(const char *method, const QVariantList &arguments)
{
    return call("/StatusNotifierItem/Menu", "com.canonical.dbusmenu", method, arguments);
}

kelo::DBusMenuLayout FakeHost::open()
{
    const QDBusMessage reply = menu("AboutToShow", {0});
    return reply.arguments().value(0).toBool() ? layout() : kelo::DBusMenuLayout{};
}

kelo::DBusMenuLayout FakeHost::layout()
{
    const QDBusMessage reply = menu("GetLayout", {0, -1, QStringList()});
    return qdbus_cast<kelo::DBusMenuLayout>(reply.arguments().value(1));
}

void FakeHost::click(int id)
{
    menu("Event", {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
}

QDBusMessage FakeHost::call(const char *path, const char *interface, const char *method,
                            const QVariantList &arguments)
{
    auto message = QDBusMessage::createMethodCall(registered.constLast(), QLatin1String(path),
                                                  QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    const QDBusPendingCall pending = m_bus.asyncCall(message, patience);
    waitFor([&] { return pending.isFinished(); });
    return pending.reply();
}
