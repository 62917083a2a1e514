#include "KeloPanel/NotificationInhibition.h"

#include "Platform/linux/BusCall.h"

#include <QDBusServiceWatcher>
#include <utility>

namespace kelo {

namespace {

// The name of its interface, too.
const QString server = QStringLiteral("org.freedesktop.Notifications");
const QString serverPath = QStringLiteral("/org/freedesktop/Notifications");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

} // namespace

NotificationInhibition::NotificationInhibition(const QDBusConnection &bus) : m_bus(bus)
{
    // With the interface as its first argument.
    m_bus.connect(server, serverPath, propertiesInterface, QStringLiteral("PropertiesChanged"), {server}, {},
                  this, SLOT(ask()));
    auto *watcher = new QDBusServiceWatcher(server, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotificationInhibition::ask);
    ask();
}

// Where there is no server, or none with the property, the answer is an error.
void NotificationInhibition::ask()
{
    auto get = QDBusMessage::createMethodCall(server, serverPath, propertiesInterface, QStringLiteral("Get"));
    get.setAutoStartService(false);
    m_question = std::make_unique<QObject>();
    mivora::callBus<QDBusVariant>(
        m_bus, get << server << QStringLiteral("Inhibited"), m_question.get(), [this](const auto &reply) {
            const bool isInhibited = reply.isValid() && reply.value().variant().toBool();
            if (std::exchange(m_isInhibited, isInhibited) != isInhibited)
                Q_EMIT changed();
        });
}

} // namespace kelo
