#pragma once

#include "ICalendar/CivilTime.h"

#include <bitset>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Recurrence rules (RFC 5545, 3.3.10). The expansion goes straight to the wanted days, and its work is
/// counted: a rule is hostile input.
namespace mivora::ical {

enum class Frequency { secondly, minutely, hourly, daily, weekly, monthly, yearly };

/// What becomes of a day of the month that a month doesn't have (RFC 7529).
enum class Skip { omit, backward, forward };

struct RecurrenceRule
{
    /// A weekday (0 is Sunday), its first, second … or, negative, last … one; 0 means every one.
    struct Weekday
    {
        int ordinal = 0;
        unsigned day = 0;
    };

    Frequency frequency = Frequency::daily;
    std::int64_t interval = 1;
    std::optional<std::int64_t> count;
    std::optional<TimeValue> until;
    unsigned weekStart = 1;
    std::bitset<13> months;
    /// Positions counted from the end are stored above those counted from the start.
    std::bitset<64> monthDays;
    std::bitset<734> yearDays;
    std::bitset<108> weeks;
    std::vector<Weekday> weekdays;
    std::bitset<24> hours;
    std::bitset<60> minutes;
    std::bitset<61> seconds;
    std::vector<int> positions;
    Skip skip = Skip::omit;

    /// Reads the value of an RRULE, as far as it makes sense: what is empty, unknown or no possible value is
    /// left out, and of two parts of one name the first counts. Nothing without a frequency, or when another
    /// calendar than the Gregorian is asked for.
    static std::optional<RecurrenceRule> parse(std::string_view text);

    /// Whether nothing but weekdays restricts or extends its periods.
    bool namesOnlyWeekdays() const;
};

/// How much work an expansion may still do, in tested days and produced times.
struct WorkBudget
{
    std::int64_t left = 0;

    /// Whether there was still enough for `cost`.
    bool spend(std::int64_t cost) { return (left -= cost) >= 0; }
};

/// The times of a series that are wanted, by the clock of the series.
struct LocalSpan
{
    LocalTime from{};
    LocalTime to{};
};

enum class Expansion { complete, cutShort };

/// Calls `take` for the times of `rule` in [span.from, span.to), in order, until it returns false. `start` is
/// the first time of the series; one that is a whole day has only whole days. UNTIL is for `take` to know: it
/// is a time of another clock.
Expansion expandRule(const RecurrenceRule &rule, const TimeValue &start, LocalSpan span, WorkBudget &budget,
                     const std::function<bool(LocalTime)> &take);

} // namespace mivora::ical
