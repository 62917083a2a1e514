#include "App/commands/AgendaFollower.h"

#include "App/AgendaJson.h"
#include "MeetingTexts/MeetingTexts.h"

#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

constexpr std::chrono::seconds askAgainAfter{1};

/// A program that is started anew has told by then of the meetings that run, however long its calendars take.
constexpr std::chrono::minutes startingPatience{1};

} // namespace

AgendaFollower::AgendaFollower(SessionOptions options, Topic topic, Printer printer,
                               const QDBusConnection &bus)
    : m_options(std::move(options)), m_topic(topic), m_printer(std::move(printer)), m_instance(bus),
      m_systemEvents(LinuxSystemEvents::Sources::ofTheSystem(QDBusConnection::systemBus()))
{
}

void AgendaFollower::start()
{
    if (!m_options.isOwnDay())
        return followSession();
    m_instance.follow();
    connect(&m_instance, &RunningInstance::came, this, &AgendaFollower::followInstance);
    connect(&m_instance, &RunningInstance::went, this, &AgendaFollower::followSession);
    if (m_topic == Topic::agenda)
        connect(&m_instance, &RunningInstance::agendaChanged, this, &AgendaFollower::show);
    else
        connect(&m_instance, &RunningInstance::happened, this, &AgendaFollower::tell);
    m_missedEnds.setSingleShot(true);
    connect(&m_missedEnds, &QTimer::timeout, this, &AgendaFollower::tellMissedEnds);
    if (m_instance.isThere())
        followInstance();
    else
        followSession();
}

void AgendaFollower::followInstance()
{
    m_session.reset();
    m_takesIn = false;
    if (m_topic == Topic::meetings) {
        expectRepetition();
        if (!m_told.empty())
            m_missedEnds.start(startingPatience);
        return;
    }
    if (const auto agenda = m_instance.agenda())
        return show(*agenda);
    // A program that is just starting has its name before it can answer, and tells only those who have asked.
    QTimer::singleShot(askAgainAfter, this, [this] {
        if (m_instance.isThere())
            followInstance();
    });
}

void AgendaFollower::followSession()
{
    expectRepetition();
    m_missedEnds.stop();
    m_session = std::make_unique<CalendarSession>(m_options);
    if (m_topic == Topic::meetings)
        connect(&m_session->scheduler(), &Scheduler::happened, m_session.get(),
                [this](const char *event, const Meeting &meeting) {
                    tell(QLatin1String(event), meetingJson(meeting, m_session->agendaContext()));
                });
    m_session->whenLoaded([this](bool) {
        m_takesIn = false;
        tellMissedEnds();
        observeSession();
        refreshSession();
    });
}

void AgendaFollower::observeSession()
{
    CalendarSession *session = m_session.get();
    const auto refreshOn = [&](auto *sender, auto signal) {
        connect(sender, signal, session, [this] { refreshSession(); });
    };
    session->source().setOnChange([this] { refreshSession(); });
    for (const auto signal : {&Preferences::showTitleChanged, &Preferences::titleWidthChanged,
                              &Preferences::leadMinutesChanged, &Preferences::remindWithoutLinkChanged,
                              &Preferences::disabledCalendarIDsChanged, &Preferences::ignoredChanged,
                              &Preferences::browserServicesChanged, &Preferences::joinHotKeyChanged})
        refreshOn(&session->prefs(), signal);
    refreshOn(&m_systemEvents, &SystemEvents::didWake);
    refreshOn(&m_nextChange, &RealTimeAlarm::reached);
    refreshOn(&m_nextChange, &RealTimeAlarm::clockWasSet);
    connect(&m_systemEvents, &SystemEvents::timeZoneChanged, session, [this, session] {
        session->updateTimeZone();
        refreshSession();
    });
}

void AgendaFollower::refreshSession()
{
    m_session->scheduler().refresh();
    if (m_topic == Topic::agenda)
        show(m_session->agenda());
    const Scheduler &scheduler = m_session->scheduler();
    const Timestamp now = m_session->clock().now();
    Seconds wait = scheduler.nextChangeAfter(now) - now;
    for (const auto &shown : {scheduler.next(), scheduler.panelRequest()}) {
        if (shown && m_topic == Topic::agenda)
            wait = std::min(wait, untilNextMinute(shown->start - now));
    }
    m_nextChange.set(QDateTime::currentDateTimeUtc().addMSecs(qint64(std::ceil(wait.count() * 1000))));
}

void AgendaFollower::show(const QJsonObject &agenda)
{
    if (!m_shown.isEmpty() && !showsChange(m_shown, agenda))
        return;
    m_shown = agenda;
    m_printer(agenda);
}

void AgendaFollower::tell(const QString &event, const QJsonObject &meeting)
{
    // A program that is started anew tells once more of what runs, also that it is due where it was joined.
    const QString id = meeting.value(QLatin1String("id")).toString();
    Told &told = m_told[id];
    told.meeting = meeting;
    told.isRepeated = true;
    const bool isLate = event == QLatin1String(meetingEvent::due) && !told.events.empty();
    if (isLate || !told.events.insert(event).second)
        return;
    if (event == QLatin1String(meetingEvent::ended))
        m_told.erase(id);
    if (!m_takesIn)
        m_printer({{QStringLiteral("event"), event}, {QStringLiteral("meeting"), meeting}});
}

void AgendaFollower::expectRepetition()
{
    for (auto &told : m_told)
        told.second.isRepeated = false;
}

void AgendaFollower::tellMissedEnds()
{
    for (const auto &[id, told] : std::map(m_told)) {
        if (!told.isRepeated && told.events.contains(QLatin1String(meetingEvent::started)))
            tell(QLatin1String(meetingEvent::ended), told.meeting);
    }
}

} // namespace mivora
