#pragma once

#include "ICalendar/CalendarText.h"

#include <libical/ical.h>

namespace mivora::ical {

/// Fills title, attendees, url, location and notes of \a event from \a component (a VEVENT). An event without
/// URL takes the conference link that servers put elsewhere; one without DESCRIPTION takes X-ALT-DESC. The
/// one mapping for all stores.
void readEventFields(icalcomponent *component, Occurrence &event);

} // namespace mivora::ical
