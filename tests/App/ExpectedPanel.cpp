#include "ExpectedPanel.h"

#include <QDateTime>
#include <algorithm>
#include <tuple>

namespace mivora {

void ExpectedPanel::look(const PlannedMeetings &planned, Timestamp now, const QTimeZone &zone)
{
    const QDateTime local = QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(now)), zone);
    const auto midnight =
        timestampFromSeconds(double(local.date().addDays(1).startOfDay(zone).toSecsSinceEpoch()));
    std::vector<PlannedMeeting> today = planned.touching(now, midnight);
    std::erase_if(today, [&](const PlannedMeeting &meeting) {
        return meeting.isAllDay || meeting.isDeclined || hiddenCalendars.contains(meeting.calendar);
    });
    const auto isSooner = [](const PlannedMeeting &left, const PlannedMeeting &right) {
        return std::tie(left.start, left.uid) < std::tie(right.start, right.uid);
    };
    std::sort(today.begin(), today.end(), isSooner);

    m_agenda = today;
    // Of what is no longer ahead nothing is remembered.
    std::set<Occurrence> ahead;
    for (const PlannedMeeting &meeting : today)
        ahead.insert(occurrence(meeting));
    std::erase_if(m_settled, [&](const Occurrence &settled) { return !ahead.contains(settled); });
    std::erase_if(m_quietUntil, [&](const auto &quiet) { return !ahead.contains(quiet.first); });

    // The one that starts last; then one to join; then the first by its title.
    std::stable_sort(today.begin(), today.end(), [](const auto &left, const auto &right) {
        return std::pair(left.start, left.hasLink) > std::pair(right.start, right.hasLink);
    });
    const auto wanted = std::find_if(today.begin(), today.end(),
                                     [&](const auto &meeting) { return isAboutToStart(meeting, now); });
    const bool isShown = wanted != today.end();
    if (isShown && !m_shown)
        ++m_showings;
    m_shown = isShown ? std::optional(*wanted) : std::nullopt;
}

bool ExpectedPanel::isAboutToStart(const PlannedMeeting &meeting, Timestamp now) const
{
    if (now < meeting.start - std::chrono::minutes(leadMinutes) || m_settled.contains(occurrence(meeting)))
        return false;
    const auto quiet = m_quietUntil.find(occurrence(meeting));
    return (meeting.hasLink || remindsWithoutLink) && (quiet == m_quietUntil.end() || quiet->second <= now);
}

void ExpectedPanel::forgetAll()
{
    m_settled.clear();
    m_quietUntil.clear();
    m_shown.reset();
}

} // namespace mivora
