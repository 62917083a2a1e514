#pragma once

#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "Platform/linux/LinuxSystemEvents.h"
#include "Platform/linux/RealTimeAlarm.h"

#include <QObject>
#include <QTimer>
#include <functional>
#include <map>
#include <set>

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

    AgendaFollower(SessionOptions options, Topic topic, Printer printer,
                   const QDBusConnection &bus = QDBusConnection::sessionBus());

    /// Prints the agenda as it is, but nothing that has happened, and goes on from the event loop.
    void start();

private:
    void followSession();
    void observeSession();
    void followInstance();
    void refreshSession();
    void show(const QJsonObject &agenda);
    void tell(const QString &event, const QJsonObject &meeting);
    /// Who tells from now on tells once more of the meetings that run.
    void expectRepetition();
    /// Of those that ended, or were cancelled, while nobody was there to tell.
    void tellMissedEnds();

    struct Told
    {
        QJsonObject meeting;
        std::set<QString> events;
        bool isRepeated = false;
    };

    SessionOptions m_options;
    Topic m_topic;
    Printer m_printer;
    QJsonObject m_shown;
    /// By the meeting's id.
    std::map<QString, Told> m_told;
    /// Whether what is told was so before the start, and isn't printed.
    bool m_takesIn = true;
    QTimer m_missedEnds;
    RunningInstance m_instance;
    std::unique_ptr<CalendarSession> m_session;
    LinuxSystemEvents m_systemEvents;
    /// Goes off when the session's agenda changes by time alone.
    RealTimeAlarm m_nextChange;
};

} // namespace mivora
