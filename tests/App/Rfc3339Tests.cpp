#include "App/commands/Rfc3339.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(Rfc3339, readsTimesWithAnOffsetAlone)
{
    const std::pair<const char *, std::optional<double>> cases[] = {
        {"1970-01-01T00:00:00Z", 0},
        {"1970-01-01 01:00:00+01:00", 0},
        {"1969-12-31t23:59:59.5z", -0.5},
        {"2026-03-10T09:00:00-03:30", 1773145800},
        {"2016-12-31T23:59:60Z", 1483228800},
        {"2026-03-10T09:00:00", std::nullopt},
        {"2026-02-29T00:00:00Z", std::nullopt},
        {"2026-03-10T24:00:00Z", std::nullopt},
        {"2026-03-10T09:00:61Z", std::nullopt},
        {"2026-03-10T09:00:00+24:00", std::nullopt},
        {"2026-03-10T09:00:00Z\n", std::nullopt},
        {"2026-03-10T09:00:00.Z", std::nullopt},
    };
    for (const auto &[text, seconds] : cases) {
        const auto time = timestampFromRfc3339(text);
        EXPECT_EQ(time ? std::optional(secondsSinceEpoch(*time)) : std::nullopt, seconds) << text;
    }
}

TEST(Rfc3339, writesTheOffsetOfTheZoneAtThatTime)
{
    const std::tuple<const char *, double, const char *> cases[] = {
        {"Europe/Berlin", 1774745999, "2026-03-29T01:59:59+01:00"},
        {"Europe/Berlin", 1774746000, "2026-03-29T03:00:00+02:00"},
        {"America/St_Johns", 0, "1969-12-31T20:30:00-03:30"},
        {"Europe/Berlin", 253402300799, "9999-12-31T23:59:59+00:00"},
        {"Asia/Kathmandu", 1773136800.25, "2026-03-10T15:45:00.250+05:45"},
    };
    for (const auto &[zone, seconds, text] : cases)
        EXPECT_EQ(rfc3339(timestampFromSeconds(seconds), QTimeZone(zone)).toStdString(), text);
}

} // namespace mivora
