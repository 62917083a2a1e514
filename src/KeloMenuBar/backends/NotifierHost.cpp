#include "KeloMenuBar/backends/NotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>

namespace kelo {

namespace {

const QString &watcherName()
{
    static const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    return name;
}

const QString &watcherPath()
{
    static const QString path = QStringLiteral("/StatusNotifierWatcher");
    return path;
}

QDBusMessage busCall(const QString &method, const QString &argument)
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                               QStringLiteral("/org/freedesktop/DBus"),
                                               QStringLiteral("org.freedesktop.DBus"), method);
    call << argument;
    return call;
}

// Calls the bus and hands over the answer, or the default value for an error.
template<typename Value, typename Handler>
void ask(const QDBusConnection &bus, const QDBusMessage &call, QObject *receiver, Handler handler)
{
    auto *pending = new QDBusPendingCallWatcher(bus.asyncCall(call), receiver);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, receiver, [pending, handler] {
        const QDBusPendingReply<Value> reply = *pending;
        handler(reply.isError() ? Value() : reply.value());
        pending->deleteLater();
    });
}

// Empty if the process is not visible from here, as from within a sandbox.
QString processName(uint pid)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
    return pid != 0 && file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).trimmed()
                                                      : QString();
}

} // namespace

NotifierHost::NotifierHost(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_bus(bus), m_watcher(watcherName(), bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &owner) { setOwner(owner); });
    // From any sender: with a name, Qt would wait for its owner here.
    for (const char *change : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        m_bus.connect({}, watcherPath(), watcherName(), QLatin1String(change), this, SLOT(askDrawn()));
    // The connection's own word: a bus that is gone tells of nobody's end.
    m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(loseBus()));
    ask<QString>(m_bus, busCall(QStringLiteral("GetNameOwner"), watcherName()), this,
                 [this](const QString &owner) { setOwner(owner); });
}

void NotifierHost::setOwner(const QString &owner)
{
    if (!owner.isEmpty() && owner == m_owner)
        return;
    m_owner = owner;
    m_host = {.desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP")};
    if (owner.isEmpty())
        Q_EMIT absent();
    else
        askProcess();
}

void NotifierHost::loseBus()
{
    setOwner({});
}

void NotifierHost::askProcess()
{
    ask<uint>(m_bus, busCall(QStringLiteral("GetConnectionUnixProcessID"), m_owner), this,
              [this, owner = m_owner](uint pid) {
                  if (owner != m_owner)
                      return;
                  m_host.process = processName(pid);
                  askIndicator();
              });
}

void NotifierHost::askIndicator()
{
    ask<bool>(m_bus,
              busCall(QStringLiteral("NameHasOwner"), QStringLiteral("org.ayatana.indicator.application")),
              this, [this, owner = m_owner](bool isThere) {
                  if (owner != m_owner)
                      return;
                  m_host.hasAyatanaIndicator = isThere;
                  Q_EMIT appeared(m_host);
                  askDrawn();
              });
}

void NotifierHost::askDrawn()
{
    if (m_owner.isEmpty())
        return;
    auto call = QDBusMessage::createMethodCall(
        m_owner, watcherPath(), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
    ask<QDBusVariant>(m_bus, call, this, [this, owner = m_owner](const QDBusVariant &answer) {
        // Watchers that leave the property out draw the items themselves.
        const bool isDrawn = answer.variant() != QVariant(false);
        if (owner == m_owner)
            Q_EMIT drawnChanged(isDrawn);
    });
}

void NotifierHost::registerItem()
{
    auto call = QDBusMessage::createMethodCall(m_owner, watcherPath(), watcherName(),
                                               QStringLiteral("RegisterStatusNotifierItem"));
    // The unique name: hosts take it as well as a name of the form org.kde.StatusNotifierItem-…, which a
    // sandbox would not let us have.
    call << m_bus.baseService();
    m_bus.asyncCall(call);
}

} // namespace kelo
