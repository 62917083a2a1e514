#include "App/NextChange.h"

#include "Scheduling/SchedulerTest.h"

namespace mivora {

namespace {

class NextChange : public SchedulerTest
{
};

} // namespace

TEST_F(NextChange, comesWithTheFirstThingThatLooksDifferent)
{
    prefs.setLeadMinutes(5);
    source.events = {makeMeeting("A", at("2026-03-10T10:00:00Z"), Seconds(600))};
    const std::pair<const char *, const char *> cases[] = {
        {"2026-03-10T08:58:30Z", "2026-03-10T08:59:00.001Z"}, // "1h 2m" becomes "1h 1m"
        {"2026-03-10T09:54:59.500Z", "2026-03-10T09:55:00Z"}, // the panel
        {"2026-03-10T09:59:00.500Z", "2026-03-10T10:00:00Z"}, // the start
        {"2026-03-10T10:00:00Z", "2026-03-10T10:01:00Z"},     // "Started 1m ago"
        {"2026-03-10T10:09:30Z", "2026-03-10T10:10:00Z"},     // the end
        {"2026-03-10T11:00:00Z", "2026-03-10T17:00:00Z"},     // no later than the evening
        {"2026-03-10T19:00:00Z", "2026-03-11T00:00:00Z"},     // the day
    };
    for (const auto &[now, change] : cases) {
        refreshAt(now);
        const Timestamp next = nextChangeAfter(clock.time, scheduler, prefs, QTimeZone::utc());
        EXPECT_NEAR(secondsSinceEpoch(next), secondsSinceEpoch(at(change)), 0.002) << now;
    }
}

} // namespace mivora
