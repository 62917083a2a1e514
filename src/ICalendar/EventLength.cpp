#include "ICalendar/EventLength.h"

#include <algorithm>

namespace mivora::ical {

using namespace std::chrono;

namespace {

DurationValue between(const Moment &start, const Moment &end, const Zone &floating)
{
    const UtcTime from = zoneOf(start, floating).toUtc(start.value.local);
    return {days(0), zoneOf(end, zoneOf(start, floating)).toUtc(end.value.local) - from};
}

DurationValue daysOf(const EventTimes &event)
{
    days length(0);
    if (event.end)
        length = ceil<days>(event.end->value.local - event.start->value.local);
    else if (event.duration)
        length = event.duration->days + ceil<days>(event.duration->seconds);
    return {std::max(length, days(1)), seconds(0)};
}

} // namespace

const Zone &zoneOf(const Moment &moment, const Zone &floating)
{
    return moment.zone ? *moment.zone : floating;
}

EventLength::EventLength(DurationValue value) : m_value(value)
{
    if (m_value.days + m_value.seconds < seconds(0))
        m_value = {};
}

EventLength EventLength::of(const EventTimes &event, const Zone &floating)
{
    if (event.start->value.isDate)
        return EventLength(daysOf(event));
    if (event.end)
        return EventLength(between(*event.start, *event.end, floating));
    return EventLength(event.duration.value_or(DurationValue()));
}

EventLength EventLength::ofPeriod(const ExtraTime &period, const Zone &floating)
{
    return EventLength(period.end ? between(period.start, *period.end, floating) : *period.duration);
}

UtcTime EventLength::endAfter(LocalTime start, const Zone &zone) const
{
    const UtcTime begin = zone.toUtc(start);
    if (m_value.days == days(0))
        return begin + m_value.seconds;
    return std::max(begin, zone.toUtc(start + m_value.days) + m_value.seconds);
}

seconds EventLength::longest() const
{
    // The days themselves may be a little longer than usual.
    return m_value.days == days(0) ? m_value.seconds : m_value.days + m_value.seconds + days(2);
}

} // namespace mivora::ical
