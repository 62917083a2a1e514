#pragma once

#include "ICalendar/EventTimes.h"

namespace mivora::ical {

/// How long every occurrence of an event lasts: with DTEND exactly as long as the first, with DURATION as
/// many calendar days (RFC 5545, 3.8.5.3). Whole days are always calendar days. Never negative.
class EventLength
{
public:
    /// A property without zone is meant in \a floating.
    static EventLength of(const EventTimes &event, const Zone &floating);
    static EventLength ofPeriod(const ExtraTime &period, const Zone &floating);

    /// When an occurrence ends that starts when a clock in \a zone shows \a start.
    UtcTime endAfter(LocalTime start, const Zone &zone) const;

    /// No occurrence lasts longer.
    std::chrono::seconds longest() const;

private:
    explicit EventLength(DurationValue value);

    DurationValue m_value;
};

/// The zone in which \a moment is meant, \a floating when it names none.
const Zone &zoneOf(const Moment &moment, const Zone &floating);

} // namespace mivora::ical
