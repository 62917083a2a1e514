#include "App/ApplicationService.h"

#include "App/AgendaJson.h"
#include "App/AppDelegate.h"
#include "App/commands/CommandLine.h"
#include "Platform/SystemLog.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QJsonDocument>
#include <utility>

namespace mivora {

namespace {

QString textOf(const QJsonObject &agenda)
{
    return QString::fromUtf8(QJsonDocument(agenda).toJson(QJsonDocument::Compact));
}

} // namespace

/// org.freedesktop.Application, as the Desktop Entry Specification describes it.
class ApplicationAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(ApplicationService *service)
        : QDBusAbstractAdaptor(service), m_service(service)
    {
    }

public Q_SLOTS:

    void Activate(const QVariantMap &) { m_service->activate(); }

    /// Mivora opens no documents: being asked to is being started again.
    void Open(const QStringList &, const QVariantMap &) { m_service->activate(); }

    void ActivateAction(const QString &action, const QVariantList &parameters, const QVariantMap &,
                        const QDBusMessage &call)
    {
        m_service->perform(action, parameters.isEmpty() ? QString() : parameters.first().toString(), call);
    }

private:
    ApplicationService *m_service;
};

/// The agenda and its change signal, for the command line and status bars.
class AgendaAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.kelo.Mivora.Agenda")

public:
    explicit AgendaAdaptor(ApplicationService *service) : QDBusAbstractAdaptor(service), m_service(service) {}

public Q_SLOTS:

    QString Agenda() { return m_service->followedAgenda(); }

Q_SIGNALS:
    void AgendaChanged(const QString &agenda);

private:
    ApplicationService *m_service;
};

ApplicationService::ApplicationService(QDBusConnection bus, AppDelegate &delegate, StartedBy startedBy)
    : m_bus(std::move(bus)), m_delegate(delegate), m_isStartExpected(startedBy == StartedBy::sessionBus)
{
    connect(&delegate, &AppDelegate::refreshed, this, &ApplicationService::announceAgenda);
    new ApplicationAdaptor(this);
    m_agenda = new AgendaAdaptor(this);
    if (!m_bus.isConnected()) {
        tellNoBus();
        return;
    }
    m_bus.registerObject(QLatin1String(applicationObjectPath), this, QDBusConnection::ExportAdaptors);
    m_bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(tellNoBus()));
}

ApplicationService::~ApplicationService()
{
    m_bus.unregisterObject(QLatin1String(applicationObjectPath));
    m_bus.unregisterService(QLatin1String(applicationBusName));
}

bool claimApplicationName(const QDBusConnection &bus)
{
    if (!bus.isConnected())
        return true;
    const auto reply = bus.interface()->registerService(QLatin1String(applicationBusName));
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void ApplicationService::tellNoBus()
{
    writeToSystemLog(
        QStringLiteral("Mivora: there is no session bus: no status area but an XEmbed tray shows the "
                       "icon, and no command reaches this program"));
}

void ApplicationService::activate()
{
    if (!std::exchange(m_isStartExpected, false))
        m_delegate.reopen();
}

void ApplicationService::perform(const QString &action, const QString &argument, const QDBusMessage &call)
{
    m_isStartExpected = false;
    call.setDelayedReply(true);
    auto *caller = new QDBusServiceWatcher(this);
    // One that wants no answer may be gone before the command is performed.
    if (call.isReplyRequired()) {
        caller->setConnection(m_bus);
        caller->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
        caller->addWatchedService(call.service());
        connect(caller, &QDBusServiceWatcher::serviceUnregistered, caller, &QObject::deleteLater);
    }
    const auto answer = [bus = m_bus, call, caller](const CommandResult &result) {
        bus.send(result.isDone() ? call.createReply()
                                 : call.createErrorReply(QLatin1String(couldNotError), result.failure));
        caller->deleteLater();
    };
    m_delegate.perform({action, argument, caller, answer});
}

QString ApplicationService::followedAgenda()
{
    const QJsonObject agenda = m_delegate.agenda();
    // The others have yet to be told of what is new in it.
    if (m_announced.isEmpty())
        m_announced = agenda;
    return textOf(agenda);
}

void ApplicationService::announceAgenda()
{
    if (m_announced.isEmpty())
        return;
    QJsonObject agenda = m_delegate.agenda();
    if (!showsChange(m_announced, agenda))
        return;
    m_announced = std::move(agenda);
    Q_EMIT m_agenda->AgendaChanged(textOf(m_announced));
}

} // namespace mivora

#include "ApplicationService.moc"
