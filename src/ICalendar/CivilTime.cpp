#include "ICalendar/CivilTime.h"

#include "ICalendar/ContentLine.h"

#include <algorithm>

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

struct Unit
{
    char letter = 0;
    bool isOfTime = false;
    DurationValue value;
};

constexpr Unit units[] = {{'w', false, {days(7), 0s}},
                          {'d', false, {days(1), 0s}},
                          {'h', true, {days(0), 1h}},
                          {'m', true, {days(0), 1min}},
                          {'s', true, {days(0), 1s}}};

/// Adds the number and unit at the front of `text`, which it takes off, to `duration`.
bool takeAmount(std::string_view &text, bool inTime, DurationValue &duration)
{
    const std::size_t length = text.find_first_not_of("0123456789");
    // Nine digits keep every sum far inside of 64 bits.
    if (length == text.npos || length == 0 || length > 9)
        return false;
    const int amount = *digits(text.substr(0, length));
    const auto *unit = std::find_if(std::begin(units), std::end(units), [&](const Unit &known) {
        return known.letter == asciiLowered(text[length]) && known.isOfTime == inTime;
    });
    if (unit == std::end(units))
        return false;
    duration.days += amount * unit->value.days;
    duration.seconds += amount * unit->value.seconds;
    text.remove_prefix(length + 1);
    return true;
}

} // namespace

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
        if (!takeAmount(text, inTime, duration))
            return std::nullopt;
    }
    return negative ? DurationValue{-duration.days, -duration.seconds} : duration;
}

} // namespace mivora::ical
