#include "KeloSparkle/MeteredConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace kelo {

namespace {

// NMMetered: yes, and yes by a guess.
constexpr uint metered = 1;
constexpr uint guessedMetered = 3;

} // namespace

void askWhetherMetered(const QDBusConnection &systemBus, QObject *context, std::function<void(bool)> answer)
{
    if (!systemBus.isConnected()) {
        // A call on no connection is never answered.
        QMetaObject::invokeMethod(
            context, [answer = std::move(answer)] { answer(false); }, Qt::QueuedConnection);
        return;
    }
    const QString name = QStringLiteral("org.freedesktop.NetworkManager");
    QDBusMessage question = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/NetworkManager"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << name << QStringLiteral("Metered");
    question.setAutoStartService(false);
    auto *call = new QDBusPendingCallWatcher(systemBus.asyncCall(question), context);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, context, [call, answer = std::move(answer)] {
        const QDBusPendingReply<QDBusVariant> reply = *call;
        call->deleteLater();
        const uint value = reply.isError() ? 0 : reply.value().variant().toUInt();
        answer(value == metered || value == guessedMetered);
    });
}

} // namespace kelo
