#pragma once

#include "ICalendar/EventTimes.h"

#include <span>

namespace mivora::ical {

/// One time that an event takes place.
struct SeriesTime
{
    /// Where its text is from: the event, or what overrides this occurrence of it.
    const EventTimes *event = nullptr;
    UtcTime start{};
    UtcTime end{};
};

/// Which part of an occurrence's time is wanted, and by which zones.
struct SeriesContext
{
    const EventWindow &window;
    /// The zone in which floating times are meant.
    const Zone &floating;
    ProblemList &problems;
    WorkBudget &budget;
};

/// The occurrences in the window of all that a text says by one UID: an event, its later versions, and the
/// components that override single occurrences of it. Cancelled ones are left out.
std::vector<SeriesTime> expandSeries(std::span<const EventTimes> components, SeriesContext context);

} // namespace mivora::ical
