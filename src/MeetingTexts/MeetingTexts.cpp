#include "MeetingTexts/MeetingTexts.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

/// The context of the texts for translators.
struct CountdownTexts
{
    Q_DECLARE_TR_FUNCTIONS(Countdown)
};

constexpr double secondsPerMinute = 60;

/// The whole hours of a time, and the minutes below them.
struct Countdown
{
    qint64 hours = 0;
    qint64 minutes = 0;
};

/// Minutes are rounded up, from one whole minute on; nothing when less is left.
std::optional<Countdown> countdown(Seconds left)
{
    // Far beyond any date, and every whole number up to it is exact.
    constexpr double mostMinutes = 1e15;
    // Written so that a value that is not a number is now, too.
    if (!(left.count() >= secondsPerMinute))
        return std::nullopt;
    const auto minutes = qint64(std::min(std::ceil(left.count() / secondsPerMinute), mostMinutes));
    return Countdown{minutes / 60, minutes % 60};
}

} // namespace

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

QString countdownText(Seconds left)
{
    const auto time = countdown(left);
    if (!time)
        return CountdownTexts::tr("now");
    if (time->hours == 0)
        return CountdownTexts::tr("%1m").arg(time->minutes);
    if (time->minutes == 0)
        return CountdownTexts::tr("%1h").arg(time->hours);
    return CountdownTexts::tr("%1h %2m").arg(time->hours).arg(time->minutes);
}

QString shortCountdownText(Seconds left)
{
    const auto time = countdown(left);
    if (!time)
        return CountdownTexts::tr("now", "in a small icon");
    return time->hours == 0 ? CountdownTexts::tr("%1m", "in a small icon").arg(time->minutes)
                            : CountdownTexts::tr("%1h", "in a small icon")
                                  .arg(time->hours + (time->minutes >= 30 ? 1 : 0));
}

Seconds untilNextMinute(Seconds left)
{
    // At the whole minute itself the old number still holds.
    constexpr double margin = 0.001;
    const double rest = std::fmod(left.count() + margin, secondsPerMinute);
    return Seconds(rest > 0 ? rest : rest + secondsPerMinute);
}

QString serviceName(Service service)
{
    if (service == Service::other)
        return QCoreApplication::translate("Service", "Link", "a meeting's link to a service without a name");
    return QString::fromUtf8(displayName(service));
}

QString discreetTitle()
{
    return QCoreApplication::translate("Meeting", "Meeting", "in the place of a title that is hidden");
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
