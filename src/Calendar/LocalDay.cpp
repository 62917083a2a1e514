#include "Calendar/LocalDay.h"

#include <QDateTime>
#include <cmath>

namespace mivora {

namespace {

QDateTime localTime(Timestamp time, const QTimeZone &zone)
{
    return QDateTime::fromSecsSinceEpoch(qint64(std::floor(secondsSinceEpoch(time))), zone);
}

} // namespace

Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater)
{
    const QDateTime start = localTime(time, zone).date().addDays(daysLater).startOfDay(zone);
    if (!start.isValid())
        qFatal("Mivora: the calendar has no day %d days after %.0f", daysLater, secondsSinceEpoch(time));
    return timestampFromSeconds(double(start.toSecsSinceEpoch()));
}

int hourOfDay(Timestamp time, const QTimeZone &zone)
{
    return localTime(time, zone).time().hour();
}

} // namespace mivora
