#include "SchedulerTest.h"

namespace mivora {

class SchedulerDays : public SchedulerTest
{
};

// A day ends where the next one begins in the user's zone: days of 23 and 25 hours, of 24 hours that begin at
// one o'clock, and a day that the calendar skipped altogether.
TEST_F(SchedulerDays, followTheUsersZone)
{
    const struct
    {
        const char *zone;
        const char *now;
        const char *startOfTomorrow;
        const char *startOfDayAfter;
    } rows[] = {
        {"UTC", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
        {"Europe/Berlin", "2026-03-28T20:00:00+01:00", "2026-03-29T00:00:00+01:00",
         "2026-03-30T00:00:00+02:00"},
        {"Europe/Berlin", "2026-03-29T20:00:00+02:00", "2026-03-30T00:00:00+02:00",
         "2026-03-31T00:00:00+02:00"},
        {"America/Sao_Paulo", "2018-11-03T20:00:00-03:00", "2018-11-04T01:00:00-02:00",
         "2018-11-05T00:00:00-02:00"},
        {"America/Havana", "2026-10-31T20:00:00-04:00", "2026-11-01T00:00:00-04:00",
         "2026-11-02T00:00:00-05:00"},
        {"Atlantic/Azores", "2026-10-24T20:00:00Z", "2026-10-25T00:00:00Z", "2026-10-26T00:00:00-01:00"},
        {"Pacific/Apia", "2011-12-29T20:00:00-10:00", "2011-12-31T00:00:00+14:00",
         "2012-01-01T00:00:00+14:00"},
    };

    for (const auto &row : rows) {
        scheduler.setTimeZone(QTimeZone(row.zone));
        source.fetches.clear();
        refreshAt(row.now);
        const std::vector<FakeEventSource::Fetch> expected{
            {at(row.now), at(row.startOfTomorrow), std::nullopt},
            {at(row.startOfTomorrow), at(row.startOfDayAfter), std::nullopt}};
        EXPECT_EQ(source.fetches, expected) << row.zone << ' ' << row.now;
    }
}

TEST_F(SchedulerDays, tomorrowIsShownInTheEveningWhenNothingIsLeft)
{
    const char *const berlin = "Europe/Berlin";

    const struct
    {
        const char *name;
        const char *zone;
        const char *now;
        bool isShown;
    } rows[] = {
        {"a moment before six", "UTC", "2026-03-10T17:59:59.999Z", false},
        {"six sharp", "UTC", "2026-03-10T18:00:00Z", true},
        {"half past five here", berlin, "2026-03-10T16:30:00Z", false},
        {"six o'clock on a day of 25 hours", berlin, "2026-10-25T18:00:00+01:00", true},
        {"eighteen hours into a day of 25 hours", berlin, "2026-10-25T17:59:00+01:00", false},
    };

    for (const auto &row : rows) {
        scheduler.setTimeZone(QTimeZone(row.zone));
        source.fetches.clear();
        const Timestamp now = at(row.now);
        source.events = {makeMeeting("Tomorrow", now + Seconds(16 * 3600))};
        refreshAt(now);
        EXPECT_EQ(!scheduler.tomorrowsMeetings().empty(), row.isShown) << row.name;
        EXPECT_EQ(source.fetches.size(), row.isShown ? 2u : 1u) << row.name;
        EXPECT_FALSE(scheduler.next()) << row.name;
    }
}

TEST_F(SchedulerDays, meetingsAreSortedByStartThenTitle)
{
    source.events = {makeMeeting("Late", ten + Seconds(1)), makeMeeting("b", ten), makeMeeting("Same", ten),
                     makeMeeting("Zoë", ten), makeMeeting("Early", ten - Seconds(0.5))};
    refreshAt(ten - Seconds(60));
    EXPECT_EQ(titles(scheduler.todaysMeetings()), (Titles{"Early", "Same", "Zoë", "b", "Late"}));
}

TEST_F(SchedulerDays, onlyEnabledCalendarsAreRead)
{
    using Selection = std::optional<std::set<std::string>>;
    source.known = {{"work", "Work", "", {}}, {"home", "Home", "", {}}};

    const struct
    {
        const char *name;
        std::set<std::string> disabled;
        Selection selection;
        int listings;
    } rows[] = {
        {"all enabled", {}, std::nullopt, 0},
        {"one disabled", {"home"}, Selection({"work"}), 1},
        {"one that is gone disabled", {"old"}, Selection({"work", "home"}), 1},
        {"all disabled", {"home", "work"}, Selection(std::in_place), 1},
    };

    for (const auto &row : rows) {
        prefs.setDisabledCalendarIDs(row.disabled);
        source.fetches.clear();
        source.listings = 0;
        refreshAt("2026-03-10T19:00:00Z");
        ASSERT_EQ(source.fetches.size(), 2u) << row.name;
        EXPECT_EQ(source.fetches[0].calendarIDs, row.selection) << row.name;
        EXPECT_EQ(source.fetches[1].calendarIDs, row.selection) << row.name;
        EXPECT_EQ(source.listings, row.listings) << row.name;
    }
}

TEST_F(SchedulerDays, withoutAccessAllIsEmptyAndNothingIsFetched)
{
    source.events = {withLink(makeMeeting("M", at("2026-03-10T19:00:00Z")))};
    refreshAt("2026-03-10T19:00:00Z");
    source.fetches.clear();
    source.access = CalendarAuthorization::denied;
    refreshAt("2026-03-10T19:00:30Z");
    EXPECT_TRUE(scheduler.todaysMeetings().empty() && scheduler.tomorrowsMeetings().empty());
    EXPECT_FALSE(scheduler.next());
    EXPECT_TRUE(source.fetches.empty());
    EXPECT_EQ(takeCalls(), (Titles{"panel M", "refresh", "panel none", "refresh"}));
}

TEST_F(SchedulerDays, theZoneOfTheEnvironmentIsReadAsTheCLibraryReadsIt)
{
    Scheduler ofTheSystem(source, prefs, clock);
    const QByteArray before = qgetenv("TZ");
    for (const auto &[zone, startOfTomorrow] :
         {std::pair("Asia/Tokyo", "2026-03-11T00:00:00+09:00"),
          {"/usr/share/zoneinfo/Asia/Tokyo", "2026-03-11T00:00:00+09:00"},
          {"UTC-5", "2026-03-11T00:00:00+05:00"},
          {":UTC3:30", "2026-03-11T00:00:00-03:30"},
          {"EST5EDT4", "2026-03-11T00:00:00-04:00"}, // in summer since the second Sunday of March
          {"CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-11T00:00:00+01:00"},
          {"", "2026-03-11T00:00:00Z"},
          {"Nowhere", "2026-03-11T00:00:00Z"}}) {
        qputenv("TZ", zone);
        clock.time = at("2026-03-10T06:00:00Z");
        ofTheSystem.refresh();
        EXPECT_EQ(source.fetches.back().end, at(startOfTomorrow)) << zone;
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

} // namespace mivora
