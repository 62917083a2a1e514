#pragma once

#include "ICalendar/CalendarText.h"

namespace mivora::ical {

/// Fills name, colour and owner of \a calendar from \a header, what stands before the first component.
void readHeader(std::string_view header, CalendarText &calendar);

} // namespace mivora::ical
