#include "Meetings/Countdown.h"

#include <gtest/gtest.h>

#include <limits>

namespace mivora {

TEST(CountdownTest, roundsUpToMinutes)
{
    using Limits = std::numeric_limits<double>;

    const struct
    {
        double seconds;
        Countdown expected;
    } rows[] = {
        {-Limits::infinity(), {}},
        {-90, {}},
        {0, {}},
        {59.999, {}},
        {Limits::quiet_NaN(), {}},
        {60, {0, 1}},
        {60.001, {0, 2}},
        {61, {0, 2}},
        {3540, {0, 59}},
        {3540.5, {1, 0}},
        {3600, {1, 0}},
        {3601, {1, 1}},
        {3901, {1, 6}},
        {86'400, {24, 0}},
        {360'060, {100, 1}},
    };

    for (const auto &row : rows)
        EXPECT_EQ(countdown(Seconds(row.seconds)), row.expected) << row.seconds;
}

TEST(CountdownTest, survivesAnEternity)
{
    using Limits = std::numeric_limits<double>;
    for (const double seconds : {Limits::infinity(), Limits::max(), 0x1p63})
        EXPECT_EQ(countdown(Seconds(seconds)), (Countdown{16666666666666, 40})) << seconds;
}

} // namespace mivora
