#pragma once

#include <QDBusConnection>
#include <QObject>

namespace mivora {

/// Names on the session bus.
inline constexpr const char *applicationBusName = "app.kelo.Mivora";
inline constexpr const char *applicationObjectPath = "/app/kelo/Mivora";
inline constexpr const char *applicationInterface = "org.freedesktop.Application";
inline constexpr const char *agendaInterface = "app.kelo.Mivora.Agenda";
/// The error of an action that could not be done; its message says why, in one line.
inline constexpr const char *couldNotError = "app.kelo.Mivora.Error.CouldNot";

/// Takes the program's name on `bus`. False when another Mivora has it; true also when there is no bus to be
/// alone on.
bool claimApplicationName(const QDBusConnection &bus);

class AppDelegate;
enum class StartedBy;

/// The running program on the session bus: org.freedesktop.Application and the agenda with its change signal.
/// The system log is told when there is no bus, and when it goes: the program runs on with its panel and its
/// shortcut, but nobody reaches it any more.
class ApplicationService final : public QObject
{
    Q_OBJECT

public:
    /// `delegate` outlives the service.
    ApplicationService(QDBusConnection bus, AppDelegate &delegate, StartedBy startedBy);
    ~ApplicationService() override;

private Q_SLOTS:
    void tellNoBus();

private:
    QDBusConnection m_bus;
};

} // namespace mivora
