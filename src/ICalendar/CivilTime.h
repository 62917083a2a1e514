#pragma once

#include <chrono>
#include <optional>
#include <string_view>

/// Dates, times and durations as iCalendar writes them (RFC 5545, 3.3.4 to 3.3.6).
namespace mivora::ical {

/// What a clock on the wall shows; which zone that is in is said elsewhere.
using LocalTime = std::chrono::local_seconds;
using UtcTime = std::chrono::sys_seconds;

/// A DATE or DATE-TIME value.
struct TimeValue
{
    LocalTime local{};
    bool isDate = false;
    bool isUtc = false;
};

/// A DURATION value: days follow the calendar, the rest is exact.
struct DurationValue
{
    std::chrono::days days{};
    std::chrono::seconds seconds{};
};

/// Reads "20240131", "20240131T090000" or "20240131T090000Z", with blanks around it or not. Nothing when it
/// is anything else or no real date. A leap second is taken as the second before.
std::optional<TimeValue> parseTime(std::string_view text);

/// Reads "P1DT2H", "-PT15M" or "P2W". Nothing when it is anything else.
std::optional<DurationValue> parseDuration(std::string_view text);

/// The same reading of the clock, taken as one in UTC.
constexpr UtcTime asUtc(LocalTime local)
{
    return UtcTime(local.time_since_epoch());
}

} // namespace mivora::ical
