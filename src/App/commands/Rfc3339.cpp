#include "App/commands/Rfc3339.h"

#include <QDateTime>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

/// The first and the last that years of four digits can name, in UTC.
constexpr qint64 firstMilliseconds = -62'135'596'800'000, lastMilliseconds = 253'402'300'799'000;

int number(const QRegularExpressionMatch &match, int group)
{
    return match.captured(group).toInt();
}

std::optional<int> offsetSeconds(const QRegularExpressionMatch &match)
{
    if (match.captured(9).isEmpty())
        return 0;
    const int hours = number(match, 10);
    const int minutes = number(match, 11);
    if (hours > 23 || minutes > 59)
        return std::nullopt;
    const int offset = hours * 3600 + minutes * 60;
    return match.captured(9) == QLatin1String("-") ? -offset : offset;
}

} // namespace

std::optional<Timestamp> timestampFromRfc3339(std::string_view text)
{
    static const QRegularExpression form(
        QStringLiteral("\\A([0-9]{4})-([0-9]{2})-([0-9]{2})[Tt ]([0-9]{2}):([0-9]{2}):([0-9]{2})(\\.[0-9]+)?"
                       "([Zz]|([+-])([0-9]{2}):([0-9]{2}))\\z"));
    const auto match = form.match(QString::fromUtf8(text.data(), qsizetype(text.size())));
    if (!match.hasMatch())
        return std::nullopt;

    const QDate date(number(match, 1), number(match, 2), number(match, 3));
    // A leap second is the first second after it: clocks here have no others.
    const int second = number(match, 6);
    const QTime time(number(match, 4), number(match, 5), std::min(second, 59));
    const auto offset = offsetSeconds(match);
    if (!date.isValid() || !time.isValid() || second > 60 || !offset)
        return std::nullopt;

    const qint64 whole = QDateTime(date, time, Qt::UTC).toSecsSinceEpoch() + (second == 60 ? 1 : 0) - *offset;
    return timestampFromSeconds(double(whole) + match.captured(7).toDouble());
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
