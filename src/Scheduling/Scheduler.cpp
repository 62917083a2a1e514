#include "Scheduling/Scheduler.h"

#include "Calendar/EventSource.h"
#include "MeetingTexts/LocalDay.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"

#include <QScopedValueRollback>
#include <algorithm>

// A refresh computes everything anew from the calendars, the settings, the time and the user's decisions, and
// announces only what is not as it was. Nothing is carried over from the refresh before, so that a wrong
// clock, a changed zone or a missed notification is put right by the next one.

namespace mivora {

namespace {

/// From this hour on, the user looks ahead to tomorrow.
constexpr int eveningHour = 18;

/// Whether `value` is not what `property` was until now.
template<typename T> bool assign(T &property, T value)
{
    if (property == value)
        return false;
    property = std::move(value);
    return true;
}

PanelRules panelRules(const Preferences &prefs)
{
    return {.lead = Seconds(double(prefs.leadMinutes()) * 60),
            .remindWithoutLink = prefs.remindWithoutLink()};
}

} // namespace

Scheduler::Scheduler(EventSource &source, const Preferences &prefs, const Clock &clock)
    : m_source(source), m_prefs(prefs), m_clock(clock)
{
}

void Scheduler::refresh()
{
    if (m_isRefreshing) {
        Q_ASSERT_X(false, "Scheduler", "refresh() called by what a refresh calls");
        QMetaObject::invokeMethod(this, &Scheduler::refresh, Qt::QueuedConnection);
        return;
    }
    const QScopedValueRollback<bool> guard(m_isRefreshing, true);
    const Timestamp now = m_clock.now();
    const std::optional<std::string> panelBefore = panelMeetingID();
    const bool areMeetingsOther = updateMeetings(now);
    // A meeting that leaves today's list and comes back later starts afresh.
    m_decisions.keepOnly(m_todaysMeetings);
    const bool isRequestOther =
        assign(m_panelRequest, panelMeeting(m_todaysMeetings, m_decisions, panelRules(m_prefs), now));
    if (areMeetingsOther || isRequestOther)
        Q_EMIT changed();
    if (panelMeetingID() != panelBefore && onPanelChange)
        onPanelChange(m_panelRequest);
    if (onRefresh)
        onRefresh();
}

void Scheduler::snooze(const std::string &meetingID)
{
    m_decisions.snoozedUntil[meetingID] = m_clock.now() + snoozeLength;
    refresh();
}

void Scheduler::dismiss(const std::string &meetingID)
{
    m_decisions.dismissed.insert(meetingID);
    refresh();
}

void Scheduler::markJoined(const std::string &meetingID)
{
    m_decisions.joined.insert(meetingID);
    refresh();
}

QTimeZone Scheduler::timeZone() const
{
    return m_zone ? *m_zone : userTimeZone();
}

Scheduler::CalendarSelection Scheduler::selectedCalendars() const
{
    const std::set<std::string> &disabled = m_prefs.disabledCalendarIDs();
    if (disabled.empty())
        return std::nullopt;
    std::set<std::string> selected;
    for (const CalendarInfo &calendar : m_source.calendars()) {
        if (!disabled.contains(calendar.id))
            selected.insert(calendar.id);
    }
    return selected;
}

std::vector<Meeting> Scheduler::fetch(Timestamp start, Timestamp end, const CalendarSelection &selection,
                                      Timestamp now) const
{
    if (m_source.authorization() != CalendarAuthorization::granted)
        return {};
    return relevantMeetings(m_source.meetings(start, end, selection), now);
}

bool Scheduler::updateMeetings(Timestamp now)
{
    const QTimeZone zone = timeZone();
    const Timestamp startOfTomorrow = startOfDay(now, zone, 1);
    const CalendarSelection selection = selectedCalendars();

    bool isOther = assign(m_todaysMeetings, fetch(now, startOfTomorrow, selection, now));
    isOther |= assign(m_next, nextMeeting(m_todaysMeetings));

    std::vector<Meeting> tomorrow;
    if (m_todaysMeetings.empty() && hourOfDay(now, zone) >= eveningHour)
        tomorrow = fetch(startOfTomorrow, startOfDay(startOfTomorrow, zone, 1), selection, now);
    isOther |= assign(m_tomorrowsMeetings, std::move(tomorrow));
    return isOther;
}

std::optional<std::string> Scheduler::panelMeetingID() const
{
    return m_panelRequest ? std::optional(m_panelRequest->id) : std::nullopt;
}

Timestamp Scheduler::nextChangeAfter(Timestamp now) const
{
    const QTimeZone zone = timeZone();
    Timestamp earliest = startOfDay(now, zone, 1);
    const auto consider = [&](Timestamp time) {
        if (time > now)
            earliest = std::min(earliest, time);
    };
    const QDateTime evening(localTime(now, zone).date(), QTime(eveningHour, 0), zone);
    consider(timestampFromSeconds(double(evening.toSecsSinceEpoch())));
    for (const Meeting &meeting : m_todaysMeetings) {
        consider(meeting.start - panelRules(m_prefs).lead);
        consider(meeting.start);
        consider(meeting.end);
    }
    for (const auto &snooze : m_decisions.snoozedUntil)
        consider(snooze.second);
    return earliest;
}

} // namespace mivora
