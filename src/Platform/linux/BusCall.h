#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

namespace mivora {

/// The bus itself waits this long for a reply, 25 seconds.
inline constexpr int usualBusPatience = -1;

/// A call of the bus itself.
inline QDBusMessage busCall(const QString &method)
{
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
}

/// Calls `message` on `bus` and returns at once. `answered` is called once, later and on `context`'s thread,
/// with the reply or the error as a `QDBusPendingReply<Values...>`: also when there is no bus, and after
/// `milliseconds` without a reply. It is not called when `context` is gone by then. The call is returned,
/// which deletes itself once it is answered.
template<typename... Values, typename Answered>
QDBusPendingCallWatcher *callBus(const QDBusConnection &bus, const QDBusMessage &message, QObject *context,
                                 Answered answered, int milliseconds = usualBusPatience)
{
    auto *call = new QDBusPendingCallWatcher(bus.asyncCall(message, milliseconds), context);
    auto finish = [call, answered = std::move(answered)] {
        call->deleteLater();
        answered(QDBusPendingReply<Values...>(*call));
    };
    // A call without a bus has failed already, and its watcher never tells.
    if (call->isError())
        QMetaObject::invokeMethod(call, std::move(finish), Qt::QueuedConnection);
    else
        QObject::connect(call, &QDBusPendingCallWatcher::finished, call, std::move(finish));
    return call;
}

} // namespace mivora
