#pragma once

#include "Meetings/Service.h"
#include "Meetings/Timestamp.h"
#include "Platform/TimeZone.h"

#include <QLocale>
#include <QString>

/// What is said about a meeting's time and service, in the user's language, and the calendar days of a time
/// zone: days of 23 and 25 hours, and midnights that don't exist, are days like others.
namespace mivora {

/// The date and time, in whole seconds, that clocks in `zone` show at `time`.
QDateTime localTime(Timestamp time, const QTimeZone &zone);

/// The first instant of the calendar day, in `zone`, that is `daysLater` days after the one of `time`.
Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater = 0);

/// The time left until something that is `left` away: "now" below a minute, else minutes rounded up, as in
/// "2m", "1h" or "1h 5m".
QString countdownText(Seconds left);

/// The same where there is room for three or four characters: "now", "2m", and from an hour on the nearer
/// hour.
QString shortCountdownText(Seconds left);

/// How long what is said of a time that is `left` away, or as long past, stays as it is: it is told in whole
/// minutes, and changes when one of these is no longer whole.
Seconds untilNextMinute(Seconds left);

/// The name of `service`. Services are called what their makers call them: only "Link", which stands for any
/// other one, is translated.
QString serviceName(Service service);

/// What stands in the place of a meeting's title that is hidden.
QString discreetTitle();

/// The time of day that clocks in `zone` show at `time`, without date and seconds, as `locale` writes it:
/// "9:05 AM", "09:05". Pass QLocale::system() for the user's own way, LC_TIME included.
QString shortTime(Timestamp time, const QTimeZone &zone, const QLocale &locale);

} // namespace mivora
