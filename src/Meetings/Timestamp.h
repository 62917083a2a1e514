#pragma once

#include <chrono>

namespace mivora {

/// A point in time: seconds since 1970 in UTC, as calendars store it, with fractions.
using Timestamp = std::chrono::sys_time<std::chrono::duration<double>>;

/// A length of time in seconds, with fractions.
using Seconds = std::chrono::duration<double>;

constexpr Timestamp timestampFromSeconds(double seconds)
{
    return Timestamp(Seconds(seconds));
}

constexpr double secondsSinceEpoch(Timestamp time)
{
    return time.time_since_epoch().count();
}

} // namespace mivora
