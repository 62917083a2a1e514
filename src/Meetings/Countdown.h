#pragma once

#include "Meetings/Timestamp.h"

#include <cstdint>

namespace mivora {

/// The time left until something, as it is told to the user: whole hours and the minutes below them.
struct Countdown
{
    std::int64_t hours = 0;
    std::int64_t minutes = 0;

    /// Less than a minute is left, or the time has passed.
    bool isNow() const { return hours == 0 && minutes == 0; }

    friend bool operator==(const Countdown &, const Countdown &) = default;
};

/// The countdown for something that is `left` away: minutes are rounded up, from one whole minute on.
Countdown countdown(Seconds left);

/// How long what is said of a time that is `left` away, or as long past, stays as it is: it is told in whole
/// minutes, and changes when one of these is no longer whole.
Seconds untilNextMinute(Seconds left);

} // namespace mivora
