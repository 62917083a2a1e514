#include "Meetings/Countdown.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace mivora {

namespace {

constexpr double secondsPerMinute = 60;
constexpr std::int64_t minutesPerHour = 60;

/// Longer times are shown as this many minutes: far beyond any date, and every whole number up to it is
/// exact.
constexpr double mostMinutes = 1e15;

} // namespace

std::string countdownText(Seconds left)
{
    // Written so that a value that is not a number is "now", too.
    if (!(left.count() >= secondsPerMinute))
        return "now";
    const auto minutes = std::int64_t(std::min(std::ceil(left.count() / secondsPerMinute), mostMinutes));
    const std::int64_t hours = minutes / minutesPerHour;
    const std::int64_t rest = minutes % minutesPerHour;
    if (hours == 0)
        return std::to_string(rest) + 'm';
    const std::string text = std::to_string(hours) + 'h';
    return rest == 0 ? text : text + ' ' + std::to_string(rest) + 'm';
}

} // namespace mivora
