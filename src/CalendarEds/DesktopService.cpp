#include "CalendarEds/DesktopService.h"

#include "Platform/linux/BusCall.h"

#include <algorithm>

namespace mivora {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");

/// The number at the end grows with changes that old programs can't follow; the library knows its own.
bool isSourcesName(const QString &name)
{
    return name.startsWith(QLatin1String("org.gnome.evolution.dataserver.Sources"));
}

} // namespace

DesktopService::DesktopService(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    m_bus.connect(busName, busPath, busName, QStringLiteral("ActivatableServicesChanged"), this, SLOT(ask()));
    ask();
}

void DesktopService::ask()
{
    // Something else than the bus may have started it, such as a session manager.
    list(QStringLiteral("ListActivatableNames"),
         [this] { list(QStringLiteral("ListNames"), [this] { Q_EMIT missing(); }); });
}

void DesktopService::list(const QString &method, const std::function<void()> &ifMissing)
{
    const auto call = QDBusMessage::createMethodCall(busName, busPath, busName, method);
    callBus<QStringList>(m_bus, call, this, [this, ifMissing](const QDBusPendingReply<QStringList> &reply) {
        const QStringList names = reply.isValid() ? reply.value() : QStringList();
        const auto name = std::find_if(names.begin(), names.end(), isSourcesName);
        if (m_isFound)
            return;
        m_isFound = name != names.end();
        if (m_isFound)
            Q_EMIT found(*name);
        else
            ifMissing();
    });
}

} // namespace mivora
