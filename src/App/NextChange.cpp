#include "App/NextChange.h"

#include "MeetingTexts/LocalDay.h"
#include "Preferences/Preferences.h"
#include "Scheduling/Scheduler.h"

#include <cmath>

namespace mivora {

namespace {

/// Collects instants and keeps the first one that is still to come.
class Earliest
{
public:
    Earliest(Timestamp now, Timestamp latest) : m_now(now), m_earliest(latest) {}

    void consider(Timestamp time)
    {
        if (time > m_now && time < m_earliest)
            m_earliest = time;
    }

    Timestamp result() const { return m_earliest; }

private:
    Timestamp m_now;
    Timestamp m_earliest;
};

/// Minutes are rounded up, so what is left changes when a whole number of them is no longer left; a meeting
/// that runs is spoken of in whole minutes as well.
Timestamp nextMinuteOf(const Meeting &meeting, Timestamp now)
{
    const double left = (meeting.start - now).count();
    const double minutes = left > 0 ? std::ceil(left / 60) - 1 : std::floor(left / 60);
    // A hair later: at the whole minute itself the old number still holds.
    const double margin = left > 0 ? 0.001 : 0;
    const Timestamp change = meeting.start - Seconds(minutes * 60) + Seconds(margin);
    return change > now ? change : change + Seconds(60);
}

} // namespace

Timestamp nextChangeAfter(Timestamp now, const Scheduler &scheduler, const Preferences &prefs,
                          const QTimeZone &zone)
{
    const Timestamp today = startOfDay(now, zone);
    Earliest earliest(now, startOfDay(now, zone, 1));
    earliest.consider(today + std::chrono::hours(18));
    if (hourOfDay(now, zone) < 18) {
        // Days with a clock change reach 18:00 an hour earlier or later.
        earliest.consider(today + std::chrono::hours(17));
        earliest.consider(today + std::chrono::hours(19));
    }
    for (const Meeting &meeting : scheduler.todaysMeetings()) {
        earliest.consider(meeting.start);
        earliest.consider(meeting.end);
        earliest.consider(meeting.start - std::chrono::minutes(prefs.leadMinutes()));
        earliest.consider(meeting.start - std::chrono::minutes(1));
    }
    for (const auto &snooze : scheduler.snoozedUntil())
        earliest.consider(snooze.second);
    for (const auto &shown : {scheduler.next(), scheduler.panelRequest()}) {
        if (shown)
            earliest.consider(nextMinuteOf(*shown, now));
    }
    return earliest.result();
}

} // namespace mivora
