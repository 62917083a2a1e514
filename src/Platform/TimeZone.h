#pragma once

#include <QDateTime>
#include <QTimeZone>

/// The user's time zone, and where its days begin.
namespace mivora {

/// The zone that the C library takes the environment's TZ for: a zone's name, a zone file's path, or a POSIX
/// rule, in which "UTC-5" lies five hours east. The system's zone without TZ; UTC when TZ is empty or none of
/// these.
QTimeZone userTimeZone();

/// The first instant of `day` in `zone`: the first of two midnights, and the end of the gap where clocks
/// skip midnight. A day that the zone left out, as Samoa did when it moved across the date line, begins where
/// the next one does. Invalid when there is no such day at all.
QDateTime startOfDay(QDate day, const QTimeZone &zone);

} // namespace mivora
