#include "KeloPanel/DesktopNotification.h"

#include "Platform/Activation.h"
#include "Platform/linux/BusCall.h"

#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <utility>

namespace kelo {

namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");

constexpr uint closedByUser = 2;
constexpr uchar critical = 2;
constexpr int never = 0;
constexpr int asUsual = -1;
// Some desktops tell of the end before they tell of the action that brought it about.
constexpr std::chrono::milliseconds actionDelay{100};

QDBusMessage call(const QString &method)
{
    return QDBusMessage::createMethodCall(service, path, service, method);
}

} // namespace

DesktopNotification::DesktopNotification(const QDBusConnection &bus, QObject *parent)
    : QObject(parent), m_bus(bus)
{
}

DesktopNotification::~DesktopNotification()
{
    if (!m_closesNext)
        return;
    const QDeadlineTimer patience(std::chrono::milliseconds(300));
    while (!m_sending->isFinished() && !patience.hasExpired())
        QThread::msleep(2);
    if (m_sending->isFinished())
        finishShowing(*m_sending);
}

void DesktopNotification::show(const NotificationContent &content)
{
    listen();
    m_closesNext = false;
    if (m_sending || m_ended != 0 || !m_hasActions)
        m_next = content;
    else
        send(content);
}

void DesktopNotification::close()
{
    m_next.reset();
    m_closesNext = m_sending != nullptr;
    m_ended = 0;
    if (m_id == 0)
        return;
    m_bus.asyncCall(call(QStringLiteral("CloseNotification")) << std::exchange(m_id, 0));
}

void DesktopNotification::listen()
{
    if (std::exchange(m_listens, true))
        return;
    m_bus.connect(service, path, service, QStringLiteral("ActivationToken"), this,
                  SLOT(receiveToken(uint, QString)));
    m_bus.connect(service, path, service, QStringLiteral("ActionInvoked"), this,
                  SLOT(receiveAction(uint, QString)));
    m_bus.connect(service, path, service, QStringLiteral("NotificationClosed"), this,
                  SLOT(receiveClosed(uint, uint)));
    mivora::callBus<QStringList>(
        m_bus, call(QStringLiteral("GetCapabilities")), this, [this](const auto &reply) {
            m_hasActions = !reply.isValid() || reply.value().contains(QLatin1String("actions"));
            sendNext();
        });
}

void DesktopNotification::send(const NotificationContent &content)
{
    // The body may be read as markup; texts of ours are plain.
    QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("app.kelo.Mivora")}};
    // Those that are not go after some seconds on GNOME, and hide their buttons until the pointer is there.
    if (content.stays)
        hints.insert(QStringLiteral("urgency"), QVariant::fromValue(critical));
    const bool needsLine = !*m_hasActions && !content.insteadOfActions.isEmpty();
    const QString body = needsLine ? content.body + u'\n' + content.insteadOfActions : content.body;
    const QDBusMessage request = call(QStringLiteral("Notify"))
                                 << QStringLiteral("Mivora") << m_id << QStringLiteral("app.kelo.Mivora")
                                 << content.summary << body.toHtmlEscaped() << content.actions << hints
                                 << (content.stays ? never : asUsual);
    m_sending =
        mivora::callBus<uint>(m_bus, request, this, [this](const auto &reply) { finishShowing(reply); });
}

void DesktopNotification::finishShowing(const QDBusPendingReply<uint> &reply)
{
    m_sending = nullptr;
    m_id = reply.isValid() ? reply.value() : 0;
    if (std::exchange(m_closesNext, false))
        close();
    else if (!sendNext() && !reply.isValid())
        Q_EMIT failed();
}

bool DesktopNotification::sendNext()
{
    if (m_sending || !m_next)
        return false;
    send(*std::exchange(m_next, std::nullopt));
    return true;
}

void DesktopNotification::receiveToken(uint id, const QString &token)
{
    if (id != 0 && (id == m_id || id == m_ended))
        m_activationToken = token.toUtf8();
}

void DesktopNotification::receiveAction(uint id, const QString &key)
{
    if (id == 0 || (id != m_id && id != m_ended))
        return;
    // The desktop takes away what was acted upon, and tells so as if the user had closed it.
    if (id == m_id)
        m_id = 0;
    m_ended = 0;
    mivora::holdActivation({.token = std::exchange(m_activationToken, {})});
    Q_EMIT actionInvoked(key);
    sendNext();
}

void DesktopNotification::receiveClosed(uint id, uint reason)
{
    if (id == 0 || id != m_id)
        return;
    m_ended = std::exchange(m_id, 0);
    QTimer::singleShot(actionDelay, this, [this, id, reason] { finishClosing(id, reason); });
}

void DesktopNotification::finishClosing(uint id, uint reason)
{
    if (id != m_ended)
        return;
    m_ended = 0;
    if (reason == closedByUser)
        Q_EMIT dismissed();
    else
        Q_EMIT expired();
    sendNext();
}

} // namespace kelo
