#pragma once

#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "Platform/linux/LinuxSystemEvents.h"
#include "Platform/linux/RealTimeAlarm.h"

#include <QObject>
#include <functional>

namespace mivora {

/// Prints the agenda whenever it changes, or what happens to meetings: as the running program knows it while
/// there is one that shows the same, else by itself.
class AgendaFollower final : public QObject
{
    Q_OBJECT

public:
    enum class Topic { agenda, meetings };
    /// Is given an agenda, or {"event", "meeting"}.
    using Printer = std::function<void(const QJsonObject &news)>;

    AgendaFollower(SessionOptions options, Topic topic, Printer printer);

    /// Prints the agenda as it is, but nothing that has happened, and goes on from the event loop.
    void start();

private:
    void followSession();
    void observeSession();
    void followInstance();
    void refreshSession();
    void show(const QJsonObject &agenda);
    void tell(const QString &event, const QJsonObject &meeting);

    SessionOptions m_options;
    Topic m_topic;
    Printer m_printer;
    QJsonObject m_shown;
    /// By the meeting's id.
    std::map<QString, std::set<QString>> m_told;
    RunningInstance m_instance;
    std::unique_ptr<CalendarSession> m_session;
    LinuxSystemEvents m_systemEvents;
    /// Goes off when the session's agenda changes by time alone.
    RealTimeAlarm m_nextChange;
};

} // namespace mivora
