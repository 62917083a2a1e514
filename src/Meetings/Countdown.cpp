#include "Meetings/Countdown.h"

#include <algorithm>
#include <cmath>

namespace mivora {

namespace {

constexpr double secondsPerMinute = 60;
constexpr std::int64_t minutesPerHour = 60;

/// Longer times are shown as this many minutes: far beyond any date, and every whole number up to it is
/// exact.
constexpr double mostMinutes = 1e15;

} // namespace

Countdown countdown(Seconds left)
{
    // Written so that a value that is not a number is now, too.
    if (!(left.count() >= secondsPerMinute))
        return {};
    const auto minutes = std::int64_t(std::min(std::ceil(left.count() / secondsPerMinute), mostMinutes));
    return {minutes / minutesPerHour, minutes % minutesPerHour};
}

Seconds untilNextMinute(Seconds left)
{
    // At the whole minute itself the old number still holds.
    constexpr double margin = 0.001;
    const double rest = std::fmod(left.count() + margin, secondsPerMinute);
    return Seconds(rest > 0 ? rest : rest + secondsPerMinute);
}

} // namespace mivora
