#pragma once

#include <QDBusConnection>
#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <optional>

namespace mivora {

/// Names on the session bus.
inline constexpr const char *applicationBusName = "app.kelo.Mivora";
inline constexpr const char *applicationObjectPath = "/app/kelo/Mivora";
inline constexpr const char *applicationInterface = "org.freedesktop.Application";
inline constexpr const char *agendaInterface = "app.kelo.Mivora.Agenda";
/// The error of an action that could not be done; its message says why, in one line.
inline constexpr const char *couldNotError = "app.kelo.Mivora.Error.CouldNot";

/// Takes the program's name on \a bus. False when another Mivora has it; true also when there is no bus to be
/// alone on.
bool claimApplicationName(const QDBusConnection &bus);

/// How long a caller waits for the answer to a command.
inline constexpr std::chrono::milliseconds callerPatience{4'500};

/// A command that came over the bus.
struct BusCommand
{
    QString action;
    QString argument;
    /// Gone when nobody waits for the answer any more.
    QPointer<QObject> caller;
    /// To be called once: with nothing when the command was done, else with one line that says why not.
    std::function<void(const std::optional<QString> &failure)> answer;
};

/// What others can ask of the running program.
struct ApplicationActions
{
    /// Performs the command now or later.
    std::function<void(const BusCommand &command)> perform;
    /// The program was started again: bring its settings up.
    std::function<void()> activate;
    /// The agenda as `mivora agenda --json` prints it.
    std::function<QJsonObject()> agenda;
};

class AgendaAdaptor;

/// The running program on the session bus: org.freedesktop.Application (Desktop Entry Specification, "D-Bus
/// activation") and the agenda with its change signal. The system log is told when there is no bus, and when
/// it goes: the program runs on with its panel and its shortcut, but nobody reaches it any more.
class ApplicationService final : public QObject
{
    Q_OBJECT

public:
    ApplicationService(QDBusConnection bus, ApplicationActions actions, QObject *parent = nullptr);
    ~ApplicationService() override;

    /// Tells listeners when the agenda is another one than at the last call; the time alone doesn't
    /// count. Nothing is made or sent until somebody on the bus has asked for the agenda.
    void announceAgenda();

private Q_SLOTS:
    void tellNoBus();

private:
    friend class ApplicationAdaptor;
    friend class AgendaAdaptor;

    void perform(const QString &action, const QString &argument, const QDBusMessage &call);
    QString followedAgenda();

    QDBusConnection m_bus;
    ApplicationActions m_actions;
    AgendaAdaptor *m_agenda = nullptr;
    /// What those that asked know; empty while nobody has.
    QJsonObject m_announced;
};

} // namespace mivora
