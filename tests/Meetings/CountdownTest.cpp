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
        const char *text;
    } rows[] = {
        {-Limits::infinity(), "now"},
        {-90, "now"},
        {0, "now"},
        {59.999, "now"},
        {Limits::quiet_NaN(), "now"},
        {60, "1m"},
        {60.001, "2m"},
        {61, "2m"},
        {3540, "59m"},
        {3540.5, "1h"},
        {3600, "1h"},
        {3601, "1h 1m"},
        {3901, "1h 6m"},
        {86'400, "24h"},
        {360'060, "100h 1m"},
    };

    for (const auto &row : rows)
        EXPECT_EQ(countdownText(Seconds(row.seconds)), row.text) << row.seconds;
}

TEST(CountdownTest, survivesAnEternity)
{
    using Limits = std::numeric_limits<double>;
    for (const double seconds : {Limits::infinity(), Limits::max(), 0x1p63})
        EXPECT_EQ(countdownText(Seconds(seconds)), "16666666666666h 40m") << seconds;
}

} // namespace mivora
