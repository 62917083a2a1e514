#include "App/commands/Rfc3339.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

/// The first and the last that years of four digits can name, in UTC.
constexpr qint64 firstMilliseconds = -62'135'596'800'000, lastMilliseconds = 253'402'300'799'000;

} // namespace

std::optional<Timestamp> timestampFromRfc3339(std::string_view text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9]{4}-[0-9]{2}-[0-9]{2})[Tt ]((?:[01][0-9]|2[0-3]):[0-5][0-9]:)([0-5][0-9]|60)"
                       "(\\.[0-9]+)?([Zz]|[+-](?:[01][0-9]|2[0-3]):[0-5][0-9])\\z"));
    const auto match = form.match(QString::fromUtf8(text.data(), qsizetype(text.size())));
    // A leap second is the first second after it: clocks here have no others.
    const bool isLeapSecond = match.captured(3) == QLatin1String("60");
    const QString second = isLeapSecond ? QStringLiteral("59") : match.captured(3);
    const QDateTime time = QDateTime::fromString(match.captured(1) + QLatin1Char('T') + match.captured(2) +
                                                     second + match.captured(5).toUpper(),
                                                 Qt::ISODate);
    if (!match.hasMatch() || !time.isValid())
        return std::nullopt;
    return timestampFromSeconds(double(time.toSecsSinceEpoch() + (isLeapSecond ? 1 : 0)) +
                                match.captured(4).toDouble());
}

QString rfc3339(Timestamp time, const QTimeZone &zone)
{
    const auto milliseconds = qint64(std::floor(secondsSinceEpoch(time) * 1000));
    QDateTime local = QDateTime::fromMSecsSinceEpoch(milliseconds, zone);
    if (local.date().year() < 1 || local.date().year() > 9999)
        local = QDateTime::fromMSecsSinceEpoch(std::clamp(milliseconds, firstMilliseconds, lastMilliseconds),
                                               QTimeZone::utc());
    const int offset = local.offsetFromUtc();
    const QString seconds =
        local.toString(local.time().msec() == 0 ? QStringLiteral("yyyy-MM-ddTHH:mm:ss")
                                                : QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    return seconds + QStringLiteral("%1%2:%3")
                         .arg(offset < 0 ? QLatin1Char('-') : QLatin1Char('+'))
                         .arg(std::abs(offset) / 3600, 2, 10, QLatin1Char('0'))
                         .arg(std::abs(offset) / 60 % 60, 2, 10, QLatin1Char('0'));
}

} // namespace mivora
