#include "ICalendar/CivilTime.h"

#include <algorithm>
#include <charconv>

namespace mivora::ical {

using namespace std::chrono;

namespace {

std::optional<int> digits(std::string_view text)
{
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        value = value * 10 + (c - '0');
    }
    return value;
}

std::optional<local_days> parseDate(std::string_view text)
{
    const auto y = digits(text.substr(0, 4)), m = digits(text.substr(4, 2)), d = digits(text.substr(6, 2));
    if (!y || !m || !d)
        return std::nullopt;
    const year_month_day date{year(*y), month(unsigned(*m)), day(unsigned(*d))};
    return date.ok() ? std::optional(local_days(date)) : std::nullopt;
}

std::optional<seconds> parseClock(std::string_view text)
{
    const auto h = digits(text.substr(0, 2)), m = digits(text.substr(2, 2)), s = digits(text.substr(4, 2));
    if (!h || !m || !s || *h > 23 || *m > 59 || *s > 60)
        return std::nullopt;
    return hours(*h) + minutes(*m) + seconds(std::min(*s, 59));
}

/// Takes a number and its unit off the front of \a text. Nine digits keep every sum far inside of 64 bits.
bool takeAmount(std::string_view &text, long &amount, char &unit)
{
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, amount);
    if (error != std::errc() || rest == end || rest - text.data() > 9 || amount < 0)
        return false;
    unit = *rest;
    text.remove_prefix(std::size_t(rest - text.data()) + 1);
    return true;
}

bool addAmount(DurationValue &duration, long amount, char unit, bool inTime)
{
    switch (asciiLowered(unit)) {
    case 'w':
        duration.days += weeks(amount);
        return !inTime;
    case 'd':
        duration.days += days(amount);
        return !inTime;
    case 'h':
        duration.seconds += hours(amount);
        return inTime;
    case 'm':
        duration.seconds += minutes(amount);
        return inTime;
    case 's':
        duration.seconds += seconds(amount);
        return inTime;
    default:
        return false;
    }
}

} // namespace

std::string_view withoutBlanks(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::optional<TimeValue> parseTime(std::string_view text)
{
    text = withoutBlanks(text);
    const bool isUtc = text.size() == 16 && asciiLowered(text[15]) == 'z';
    if (text.size() != 8 && text.size() != 15 && !isUtc)
        return std::nullopt;
    const auto date = parseDate(text);
    if (!date)
        return std::nullopt;
    if (text.size() == 8)
        return TimeValue{LocalTime(*date), true, false};
    const auto clock = asciiLowered(text[8]) == 't' ? parseClock(text.substr(9, 6)) : std::nullopt;
    if (!clock)
        return std::nullopt;
    return TimeValue{*date + *clock, false, isUtc};
}

std::optional<DurationValue> parseDuration(std::string_view text)
{
    text = withoutBlanks(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.size() < 3 || asciiLowered(text.front()) != 'p')
        return std::nullopt;
    text.remove_prefix(1);
    DurationValue duration;
    bool inTime = false;
    while (!text.empty()) {
        if (!inTime && asciiLowered(text.front()) == 't') {
            inTime = true;
            text.remove_prefix(1);
        }
        long amount = 0;
        char unit = 0;
        if (!takeAmount(text, amount, unit) || !addAmount(duration, amount, unit, inTime))
            return std::nullopt;
    }
    return negative ? DurationValue{-duration.days, -duration.seconds} : duration;
}

} // namespace mivora::ical
