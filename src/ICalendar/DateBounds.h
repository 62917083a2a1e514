#pragma once

#include "ICalendar/CalendarOutline.h"

namespace mivora::ical {

/// An interval, in seconds since 1970, outside of which an event has no occurrence; infinite where unknown.
struct DateBounds
{
    double earliest = -std::numeric_limits<double>::infinity();
    double latest = std::numeric_limits<double>::infinity();

    bool mayTouch(const EventWindow &window) const
    {
        return earliest < window.to.time_since_epoch().count() &&
               latest >= window.from.time_since_epoch().count();
    }
};

/// Judges by the digits of its dates when \a event can take place, whatever zones these are in. Allocates
/// nothing unless lines are folded; \a buffer is for those.
DateBounds dateBounds(const EventOutline &event, std::string &buffer);

} // namespace mivora::ical
