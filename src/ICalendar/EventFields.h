#pragma once

#include "ICalendar/CalendarText.h"

namespace mivora::ical {

/// Fills title, attendees, url, location and notes of `event` from `component` (a VEVENT without its BEGIN
/// and END). An event without URL takes the conference link that servers put elsewhere; one without
/// DESCRIPTION takes X-ALT-DESC. A property without a value is none.
void readEventFields(std::string_view component, Occurrence &event);

} // namespace mivora::ical
