#include "MeetingTexts/LocalDay.h"

#include <cmath>

namespace mivora {

QDateTime localTime(Timestamp time, const QTimeZone &zone)
{
    return QDateTime::fromSecsSinceEpoch(qint64(std::floor(secondsSinceEpoch(time))), zone);
}

Timestamp startOfDay(Timestamp time, const QTimeZone &zone, int daysLater)
{
    const QDateTime start = startOfDay(localTime(time, zone).date().addDays(daysLater), zone);
    if (!start.isValid())
        qFatal("Mivora: the calendar has no day %d days after %.0f", daysLater, secondsSinceEpoch(time));
    return timestampFromSeconds(double(start.toSecsSinceEpoch()));
}

int hourOfDay(Timestamp time, const QTimeZone &zone)
{
    return localTime(time, zone).time().hour();
}

} // namespace mivora
