#include "App/ApplicationService.h"

#include "App/AgendaJson.h"
#include "App/AppDelegate.h"
#include "App/commands/CommandLine.h"
#include "Calendar/CalendarSubscriptions.h"
#include "Platform/SystemLog.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QJsonDocument>
#include <algorithm>
#include <utility>

namespace mivora {

namespace {

using namespace std::chrono_literals;

/// From the start to the bus's call, on a machine that is busy with a login.
constexpr auto activationPatience = 10s;

QString textOf(const QJsonObject &json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

} // namespace

/// org.freedesktop.Application, as the Desktop Entry Specification describes it ("D-Bus activation").
class ApplicationAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    ApplicationAdaptor(QObject *service, const QDBusConnection &bus, AppDelegate &delegate,
                       StartedBy startedBy)
        : QDBusAbstractAdaptor(service), m_bus(bus), m_delegate(delegate),
          m_startExpected(startedBy == StartedBy::sessionBus ? activationPatience : 0ms)
    {
    }

public Q_SLOTS:

    void Activate(const QVariantMap &platformData)
    {
        holdActivation(Activation::fromPlatformData(platformData));
        if (std::exchange(m_startExpected, {}).hasExpired())
            m_delegate.reopen();
    }

    /// Links to calendars are opened; being asked for anything else is being started again.
    void Open(const QStringList &links, const QVariantMap &platformData)
    {
        const auto link = std::ranges::find_if(links, isCalendarLink);
        if (link == links.end())
            return Activate(platformData);
        m_startExpected = {};
        holdActivation(Activation::fromPlatformData(platformData));
        m_delegate.offerCalendar(*link);
    }

    void ActivateAction(const QString &action, const QVariantList &parameters,
                        const QVariantMap &platformData, const QDBusMessage &call)
    {
        m_startExpected = {};
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
        m_delegate.perform({.action = action,
                            .argument = parameters.value(0).toString(),
                            .caller = caller,
                            .answer = answer,
                            .activation = Activation::fromPlatformData(platformData)});
    }

private:
    QDBusConnection m_bus;
    AppDelegate &m_delegate;
    /// The bus activates what it has started: that is the start itself, and brings no settings up. It does so
    /// at once, or not at all where the login or a restart was the reason.
    QDeadlineTimer m_startExpected;
};

/// The agenda, its change signal and those of meetings, for the command line, status bars and scripts.
class AgendaAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.kelo.Mivora.Agenda")

public:
    AgendaAdaptor(QObject *service, AppDelegate &delegate)
        : QDBusAbstractAdaptor(service), m_delegate(delegate)
    {
        connect(&delegate, &AppDelegate::refreshed, this, &AgendaAdaptor::announce);
        connect(&delegate, &AppDelegate::happened, this,
                [this](const char *event, const QJsonObject &meeting) {
                    QMetaObject::invokeMethod(this, event, Q_ARG(QString, textOf(meeting)));
                });
    }

public Q_SLOTS:

    QString Agenda()
    {
        const QJsonObject agenda = m_delegate.agenda();
        // The others have yet to be told of what is new in it.
        if (m_announced.isEmpty())
            m_announced = agenda;
        return textOf(agenda);
    }

    /// With the meetings that the settings leave out.
    QString AgendaOfAll() { return textOf(m_delegate.agenda(true)); }

Q_SIGNALS:
    void AgendaChanged(const QString &agenda);
    void MeetingDue(const QString &meeting);
    void MeetingJoined(const QString &meeting);
    void MeetingStarted(const QString &meeting);
    void MeetingEnded(const QString &meeting);

private:
    /// Tells listeners when the agenda is another one than at the last call; the time alone doesn't count.
    /// Nothing is made or sent until somebody on the bus has asked for the agenda.
    void announce()
    {
        if (m_announced.isEmpty())
            return;
        QJsonObject agenda = m_delegate.agenda();
        if (!showsChange(m_announced, agenda))
            return;
        m_announced = std::move(agenda);
        Q_EMIT AgendaChanged(textOf(m_announced));
    }

    AppDelegate &m_delegate;
    /// What those that asked know; empty while nobody has.
    QJsonObject m_announced;
};

ApplicationService::ApplicationService(QDBusConnection bus, AppDelegate &delegate, StartedBy startedBy)
    : m_bus(std::move(bus))
{
    new ApplicationAdaptor(this, m_bus, delegate, startedBy);
    new AgendaAdaptor(this, delegate);
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
    writeToSystemLog(QStringLiteral("Mivora: there is no session bus: no tray but one of XEmbed shows the "
                                    "icon, and no command reaches this program"));
}

} // namespace mivora

#include "ApplicationService.moc"
