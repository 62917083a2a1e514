#include "Calendar/desktop/DesktopService.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <algorithm>

namespace mivora {

namespace {

const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");
const QString activatable = QStringLiteral("ListActivatableNames");
const QString running = QStringLiteral("ListNames");

/// The number at the end grows with changes that old programs can't follow; the library knows its own.
bool isSourcesName(const QString &name)
{
    return name.startsWith(QLatin1String("org.gnome.evolution.dataserver.Sources"));
}

} // namespace

DesktopService::DesktopService(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus)
{
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(this, &DesktopService::missing, Qt::QueuedConnection);
        return;
    }
    m_bus.connect(busName, busPath, busName, QStringLiteral("ActivatableServicesChanged"), this,
                  SLOT(handleNewServices()));
    listNames(activatable);
}

void DesktopService::listNames(const QString &method)
{
    const QDBusPendingCall call =
        m_bus.asyncCall(QDBusMessage::createMethodCall(busName, busPath, busName, method));
    auto *watcher = new QDBusPendingCallWatcher(call, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, method, watcher] {
        const QDBusPendingReply<QStringList> reply = *watcher;
        watcher->deleteLater();
        look(reply.isValid() ? reply.value() : QStringList(), method);
    });
}

void DesktopService::look(const QStringList &names, const QString &method)
{
    if (m_isFound)
        return;
    const auto name = std::find_if(names.begin(), names.end(), isSourcesName);
    if (name != names.end()) {
        m_isFound = true;
        Q_EMIT found(*name);
    } else if (method == activatable) {
        // Something else may have started it, such as a session manager.
        listNames(running);
    } else {
        Q_EMIT missing();
    }
}

void DesktopService::handleNewServices()
{
    if (!m_isFound)
        listNames(activatable);
}

} // namespace mivora
