#pragma once

#include <QLoggingCategory>
#include <string>
#include <string_view>

namespace mivora {

/// "mivora.calendar": what a person has to know about calendars that can't be read.
Q_DECLARE_LOGGING_CATEGORY(calendarLog)

/// \a text for a log line: what disturbs a line, and all but ASCII of invalid UTF-8, escaped as \\xNN byte by
/// byte; cut when it is long.
std::string printable(std::string_view text);

} // namespace mivora
