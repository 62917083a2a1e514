#include "KeloMenuBar/backends/NotifierHost.h"

#include "Platform/linux/BusCall.h"

#include <QDBusVariant>
#include <QFile>

namespace kelo {

using mivora::callBus;

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
    callBus<QString>(m_bus, busCall(QStringLiteral("GetNameOwner"), watcherName()), this,
                     [this](const auto &owner) { setOwner(owner.isValid() ? owner.value() : QString()); });
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
    callBus<uint>(m_bus, busCall(QStringLiteral("GetConnectionUnixProcessID"), m_owner), this,
                  [this, owner = m_owner](const auto &pid) {
                      if (owner != m_owner)
                          return;
                      m_host.process = processName(pid.isValid() ? pid.value() : 0);
                      askIndicator();
                  });
}

void NotifierHost::askIndicator()
{
    callBus<bool>(
        m_bus, busCall(QStringLiteral("NameHasOwner"), QStringLiteral("org.ayatana.indicator.application")),
        this, [this, owner = m_owner](const auto &isThere) {
            if (owner != m_owner)
                return;
            m_host.hasAyatanaIndicator = isThere.isValid() && isThere.value();
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
    callBus<QDBusVariant>(m_bus, call, this, [this, owner = m_owner](const auto &answer) {
        // Watchers that leave the property out draw the items themselves.
        const bool isDrawn = !answer.isValid() || answer.value().variant() != QVariant(false);
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
