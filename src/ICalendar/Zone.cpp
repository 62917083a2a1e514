#include "ICalendar/Zone.h"

#include <QDateTime>
#include <algorithm>

namespace mivora::ical {

using namespace std::chrono;

UtcTime Zone::toUtc(LocalTime local) const
{
    // No offset reaches a day, and no zone changes twice within two.
    const UtcTime near = asUtc(local);
    const seconds before = offsetAt(near - days(1));
    const seconds after = offsetAt(near + days(1));
    if (before == after || offsetAt(near - before) == before)
        return near - before;
    return offsetAt(near - after) == after ? near - after : near - before;
}

seconds SystemZone::offsetAt(UtcTime time) const
{
    return seconds(
        m_zone.offsetFromUtc(QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC)));
}

seconds ListedZone::offsetAt(UtcTime time) const
{
    const auto next = std::upper_bound(m_changes.begin(), m_changes.end(), time,
                                       [](UtcTime t, const Change &change) { return t < change.at; });
    return next == m_changes.begin() ? m_first : std::prev(next)->offset;
}

} // namespace mivora::ical
