#pragma once

#include "ICalendar/CalendarText.h"

#include <string_view>

namespace mivora::ical {

/// Fills the fields of \a event from what stands between BEGIN:VEVENT and END:VEVENT. Only the lines that are
/// needed are given to libical: no nested components, attachments or NUL bytes.
void readEventFields(std::string_view text, Occurrence &event);

} // namespace mivora::ical
