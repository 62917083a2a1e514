#include "Scheduling/Scheduler.h"

#include "Calendar/EventSource.h"
#include "MeetingTexts/MeetingTexts.h"
#include "MeetingTexts/TitleText.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Clock.h"
#include "Scheduling/LeftOut.h"

#include <QScopedValueRollback>
#include <algorithm>

// A refresh computes everything anew from the calendars, the settings, the time and the user's decisions, and
// announces only what is not as it was. Nothing but what was told of meetings is carried over from the
// refresh before, so that a wrong clock, a changed zone or a missed notification is put right by the next
// one.

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

/// Of two meetings that start at the same time.
bool isBetter(const Meeting &left, const Meeting &right)
{
    if (left.joinLink.has_value() != right.joinLink.has_value())
        return left.joinLink.has_value();
    return titleSortsBefore(left.title, right.title);
}

/// The candidate whose start wins over those of all others by `startWins`. Of equals, the first one stays.
template<typename IsCandidate, typename StartWins>
std::optional<Meeting> choose(const std::vector<Meeting> &meetings, IsCandidate isCandidate,
                              StartWins startWins)
{
    const Meeting *best = nullptr;
    for (const Meeting &meeting : meetings) {
        if (!isCandidate(meeting))
            continue;
        if (!best || startWins(meeting.start, best->start) ||
            (meeting.start == best->start && isBetter(meeting, *best)))
            best = &meeting;
    }
    return best ? std::optional(*best) : std::nullopt;
}

/// Whether it is the user's and has not ended at `now`: neither of whole days nor declined.
bool isRelevant(const Meeting &meeting, Timestamp now)
{
    return !meeting.isAllDay && meeting.participation != Participation::declined && meeting.end > now;
}

/// The one that starts first; of several, the one with a join link, then the one whose title sorts first.
std::optional<Meeting> nextMeeting(const std::vector<Meeting> &meetings)
{
    return choose(
        meetings, [](const Meeting &) { return true; }, std::less{});
}

/// How long before the start the panel is shown.
Seconds leadOf(const Preferences &prefs)
{
    return Seconds(prefs.leadMinutes() * 60.0);
}

} // namespace

bool Decisions::allowPanel(const std::string &meetingID, Timestamp now) const
{
    if (dismissed.contains(meetingID) || joined.contains(meetingID))
        return false;
    const auto snooze = snoozedUntil.find(meetingID);
    return snooze == snoozedUntil.end() || now >= snooze->second;
}

void Decisions::keepOnly(const std::vector<Meeting> &meetings)
{
    const auto isGone = [&](const std::string &id) {
        return std::ranges::find(meetings, id, &Meeting::id) == meetings.end();
    };
    std::erase_if(snoozedUntil, [&](const auto &entry) { return isGone(entry.first); });
    std::erase_if(dismissed, isGone);
    std::erase_if(joined, isGone);
}

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
    const Timestamp now = m_now = m_clock.now();
    const std::optional<std::string> panelBefore = panelMeetingID();
    const bool areMeetingsOther = updateMeetings();
    // A meeting that leaves today's list and comes back later starts afresh.
    m_decisions.keepOnly(m_todaysMeetings);
    const auto isDue = [this, now](const Meeting &meeting) {
        return m_decisions.allowPanel(meeting.id, now) && (meeting.joinLink || m_prefs.remindWithoutLink()) &&
               now >= meeting.start - leadOf(m_prefs);
    };
    // The one that starts last wins, so that an upcoming meeting takes the panel from a running one.
    const bool isRequestOther = assign(m_panelRequest, choose(m_todaysMeetings, isDue, std::greater{}));
    if (areMeetingsOther || isRequestOther)
        Q_EMIT changed();
    if (panelMeetingID() != panelBefore && onPanelChange)
        onPanelChange(m_panelRequest);
    if (onRefresh)
        onRefresh();
    for (const auto &[event, meeting] :
         m_events.update(m_todaysMeetings, now, startOfDay(now, timeZone(), 1), isDue))
        Q_EMIT happened(event, meeting);
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
    for (const auto *meetings : {&m_todaysMeetings, &m_tomorrowsMeetings}) {
        const auto meeting = std::ranges::find(*meetings, meetingID, &Meeting::id);
        if (meeting != meetings->end() && m_events.isNews(meetingEvent::joined, *meeting))
            Q_EMIT happened(meetingEvent::joined, *meeting);
    }
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

std::vector<Meeting> Scheduler::fetch(Day day, const CalendarSelection &selection, bool withLeftOut) const
{
    const QTimeZone zone = timeZone();
    const bool isToday = day == Day::today;
    const bool looksAhead = m_todaysMeetings.empty() && localTime(m_now, zone).time().hour() >= eveningHour;
    if (m_source.authorization() != CalendarAuthorization::granted || !(isToday || looksAhead))
        return {};
    const Timestamp midnight = startOfDay(m_now, zone, 1);
    std::vector<Meeting> meetings =
        isToday ? m_source.meetings(m_now, midnight, selection)
                : m_source.meetings(midnight, startOfDay(midnight, zone, 1), selection);
    std::erase_if(meetings, [&](const Meeting &meeting) {
        return !isRelevant(meeting, m_now) || (!withLeftOut && !leftOutReason(meeting, m_prefs).isEmpty());
    });
    std::ranges::stable_sort(meetings, startsBefore);
    return meetings;
}

bool Scheduler::updateMeetings()
{
    const CalendarSelection selection = selectedCalendars();
    bool isOther = assign(m_todaysMeetings, fetch(Day::today, selection));
    isOther |= assign(m_next, nextMeeting(m_todaysMeetings));
    isOther |= assign(m_tomorrowsMeetings, fetch(Day::tomorrow, selection));
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
        consider(meeting.start - leadOf(m_prefs));
        consider(meeting.start);
        consider(meeting.end);
    }
    for (const auto &snooze : m_decisions.snoozedUntil)
        consider(snooze.second);
    return earliest;
}

} // namespace mivora
