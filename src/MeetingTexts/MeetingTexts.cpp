#include "MeetingTexts/MeetingTexts.h"

#include "MeetingTexts/LocalDay.h"
#include "Meetings/Countdown.h"

#include <QCoreApplication>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct CountdownTexts
{
    Q_DECLARE_TR_FUNCTIONS(Countdown)
};

} // namespace

QString countdownText(Seconds left)
{
    const Countdown time = countdown(left);
    if (time.isNow())
        return CountdownTexts::tr("now");
    if (time.hours == 0)
        return CountdownTexts::tr("%1m").arg(time.minutes);
    if (time.minutes == 0)
        return CountdownTexts::tr("%1h").arg(time.hours);
    return CountdownTexts::tr("%1h %2m").arg(time.hours).arg(time.minutes);
}

QString shortCountdownText(Seconds left)
{
    const Countdown time = countdown(left);
    if (time.isNow())
        return CountdownTexts::tr("now", "in a small icon");
    return time.hours == 0
               ? CountdownTexts::tr("%1m", "in a small icon").arg(time.minutes)
               : CountdownTexts::tr("%1h", "in a small icon").arg(time.hours + (time.minutes >= 30 ? 1 : 0));
}

QString serviceName(Service service)
{
    if (service == Service::other)
        return QCoreApplication::translate("Service", "Link", "a meeting's link to a service without a name");
    const std::string_view name = displayName(service);
    return QString::fromUtf8(name.data(), qsizetype(name.size()));
}

QString shortTime(Timestamp time, const QTimeZone &zone, const QLocale &locale)
{
    QString format = locale.timeFormat(QLocale::ShortFormat);
    // The C locale alone has seconds in its short form.
    if (format.contains(QLatin1String("ss")))
        format = QStringLiteral("HH:mm");
    return locale.toString(localTime(time, zone).time(), format);
}

} // namespace mivora
