#include "Meetings/Countdown.h"

#include <gtest/gtest.h>

#include <limits>

namespace mivora {

TEST(CountdownTest, roundsUpToMinutes)
{
    using Limits = std::numeric_limits<double>;
    constexpr Countdown eternity{16666666666666, 40};

    const struct
    {
        double seconds;
        Countdown expected;
    } rows[] = {
        {-Limits::infinity(), {}},
        {Limits::quiet_NaN(), {}},
        {59.999, {}},
        {60, {0, 1}},
        {60.001, {0, 2}},
        {3540, {0, 59}},
        {3540.5, {1, 0}},
        {3601, {1, 1}},
        {360'060, {100, 1}},
        {0x1p63, eternity},
        {Limits::infinity(), eternity},
    };

    for (const auto &row : rows)
        EXPECT_EQ(countdown(Seconds(row.seconds)), row.expected) << row.seconds;
}

} // namespace mivora
