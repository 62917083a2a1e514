#pragma once

#include "Meetings/Timestamp.h"
#include "Platform/TimeZone.h"

/// Calendar days of a time zone: days of 23 and 25 hours, and midnights that don't exist, are days like
/// others.
namespace mivora {

/// The date and time, in whole seconds, that clocks in `zone` show at `time`.
QDateTime localTime(Timestamp time, const QTimeZone &zone);

/// The first instant of the calendar day, in `zone`, that is `daysLater` days after the one of `time`.
Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater = 0);

/// The hour (0 to 23) that a clock in `zone` shows at `time`.
int hourOfDay(Timestamp time, const QTimeZone &zone);

} // namespace mivora
