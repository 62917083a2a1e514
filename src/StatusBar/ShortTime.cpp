#include "StatusBar/ShortTime.h"

#include "Calendar/LocalDay.h"

namespace mivora {

QString shortTime(Timestamp time, const QTimeZone &zone, const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    // The C locale alone has seconds in its short form.
    if (format.contains(QLatin1String("ss")))
        format = QStringLiteral("HH:mm");
    return locale.toString(localTime(time, zone).time(), format);
}

} // namespace mivora
