#include "App/RunningInstance.h"

#include "App/ApplicationService.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QJsonDocument>
#include <algorithm>
#include <array>

namespace mivora {

bool managerKnowsDisplay(const QDBusConnection &bus)
{
    auto message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.systemd1"), QStringLiteral("/org/freedesktop/systemd1"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message.setArguments({QStringLiteral("org.freedesktop.systemd1.Manager"), QStringLiteral("Environment")});
    message.setAutoStartService(false);
    const QDBusReply<QVariant> reply = bus.call(message, QDBus::Block, int(callerPatience.count()));
    const QStringList known = reply.value().toStringList();
    return std::ranges::any_of(std::array{"WAYLAND_DISPLAY", "DISPLAY"}, [&known](const char *name) {
        const QString value = qEnvironmentVariable(name);
        return !value.isEmpty() && known.contains(QLatin1String(name) % QLatin1Char('=') % value);
    });
}

RunningInstance::RunningInstance(QDBusConnection bus) : m_bus(std::move(bus)) {}

QDBusMessage RunningInstance::call(const char *interface, const QString &method,
                                   const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(QLatin1String(applicationBusName),
                                                  QLatin1String(applicationObjectPath),
                                                  QLatin1String(interface), method);
    message.setArguments(arguments);
    // A command for the running program must not start one.
    message.setAutoStartService(false);
    return m_bus.call(message, QDBus::Block, int(callerPatience.count()));
}

bool RunningInstance::isThere() const
{
    return m_bus.isConnected() && m_bus.interface()->isServiceRegistered(QLatin1String(applicationBusName));
}

std::optional<QJsonObject> RunningInstance::agenda(bool all) const
{
    if (!isThere())
        return std::nullopt;
    const QDBusMessage reply =
        call(agendaInterface, all ? QStringLiteral("AgendaOfAll") : QStringLiteral("Agenda"), {});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    return QJsonDocument::fromJson(reply.arguments().first().toString().toUtf8()).object();
}

CommandResult RunningInstance::perform(const QString &action, const QString &argument,
                                       const Activation &activation) const
{
    QVariantList parameters;
    if (!argument.isEmpty())
        parameters.append(argument);
    const QDBusMessage reply = call(applicationInterface, QStringLiteral("ActivateAction"),
                                    {action, parameters, activation.platformData()});
    if (reply.type() == QDBusMessage::ReplyMessage)
        return {};
    // The program's own words; the bus has words for programmers only.
    if (reply.errorName() == QLatin1String(couldNotError))
        return {reply.errorMessage()};
    return {QCoreApplication::translate("Application", "Mivora does not answer; if that goes on, end it with "
                                                       "`pkill -x mivora` and start it again")};
}

bool RunningInstance::startByManager() const
{
    if (!m_bus.isConnected() || !managerKnowsDisplay(m_bus))
        return false;
    return m_bus.interface()->startService(QLatin1String(applicationBusName)).isValid();
}

bool RunningInstance::activate(const Activation &activation, const QString &link) const
{
    const QDBusMessage reply =
        link.isEmpty() ? call(applicationInterface, QStringLiteral("Activate"), {activation.platformData()})
                       : call(applicationInterface, QStringLiteral("Open"),
                              {QStringList(link), activation.platformData()});
    return reply.type() == QDBusMessage::ReplyMessage;
}

void RunningInstance::follow()
{
    if (!m_bus.isConnected())
        return;
    // Every signal that the interface has.
    m_bus.connect(QLatin1String(applicationBusName), QLatin1String(applicationObjectPath),
                  QLatin1String(agendaInterface), {}, this, SLOT(receive(QString, QDBusMessage)));
    auto *watcher = new QDBusServiceWatcher(QLatin1String(applicationBusName), m_bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &RunningInstance::came);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, &RunningInstance::went);
}

void RunningInstance::receive(const QString &json, const QDBusMessage &signal)
{
    const QJsonObject news = QJsonDocument::fromJson(json.toUtf8()).object();
    if (signal.member() == QLatin1String("AgendaChanged"))
        Q_EMIT agendaChanged(news);
    else
        Q_EMIT happened(signal.member(), news);
}

} // namespace mivora
