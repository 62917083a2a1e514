#pragma once

#include "Meetings/Timestamp.h"
#include "Platform/TimeZone.h"

/// Calendar days of a time zone: days of 23 and 25 hours, and midnights that don't exist, are days like
/// others.
namespace mivora {

/// The date and time, in whole seconds, that clocks in \a zone show at \a time.
QDateTime localTime(Timestamp time, const QTimeZone &zone);

/// The first instant of the calendar day, in \a zone, that is \a daysLater days after the one of \a time.
Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater = 0);

/// The hour (0 to 23) that a clock in \a zone shows at \a time.
int hourOfDay(Timestamp time, const QTimeZone &zone);

} // namespace mivora
