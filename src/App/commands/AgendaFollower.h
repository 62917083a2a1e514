#pragma once

#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "Platform/linux/LinuxSystemEvents.h"
#include "Platform/linux/RealTimeAlarm.h"

#include <QObject>
#include <functional>

namespace mivora {

/// Prints the agenda whenever it changes: that of the running program while there is one that shows the same,
/// else its own.
class AgendaFollower final : public QObject
{
    Q_OBJECT

public:
    using Printer = std::function<void(const QJsonObject &agenda)>;

    AgendaFollower(SessionOptions options, Printer printer);

    /// Prints the agenda as it is, and goes on from the event loop.
    void start();

private:
    void followSession();
    void observeSession();
    void followInstance();
    void refreshSession();
    void show(const QJsonObject &agenda);

    SessionOptions m_options;
    Printer m_printer;
    QJsonObject m_shown;
    RunningInstance m_instance;
    std::unique_ptr<CalendarSession> m_session;
    LinuxSystemEvents m_systemEvents;
    /// Goes off when the session's agenda changes by time alone.
    RealTimeAlarm m_nextChange;
};

} // namespace mivora
