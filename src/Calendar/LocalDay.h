#pragma once

#include "Meetings/Timestamp.h"

#include <QTimeZone>

/// Calendar days of a time zone: days of 23 and 25 hours, and midnights that don't exist, are days like
/// others.
namespace mivora {

/// The first instant of the calendar day, in \a zone, that is \a daysLater days after the one of \a time.
Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater = 0);

/// The hour (0 to 23) that a clock in \a zone shows at \a time.
int hourOfDay(Timestamp time, const QTimeZone &zone);

} // namespace mivora
