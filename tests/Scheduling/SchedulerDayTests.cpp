#include "SchedulerTest.h"

namespace mivora {

class SchedulerDays : public SchedulerTest
{
};

// A day ends where the next one begins in the user's zone, which is that of the environment as the C library
// reads it: days of 23 and 25 hours, of 24 hours that begin at one o'clock, and a day that the calendar
// skipped altogether.
TEST_F(SchedulerDays, followTheUsersZone)
{
    const std::tuple<const char *, const char *, const char *, const char *> rows[] = {
        {"UTC", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
        {"Europe/Berlin", "2026-03-28T20:00:00Z", "2026-03-28T23:00:00Z", "2026-03-29T22:00:00Z"},
        {"Europe/Berlin", "2026-03-29T20:00:00Z", "2026-03-29T22:00:00Z", "2026-03-30T22:00:00Z"},
        {"America/Sao_Paulo", "2018-11-03T23:00:00Z", "2018-11-04T03:00:00Z", "2018-11-05T02:00:00Z"},
        {"America/Havana", "2026-11-01T00:00:00Z", "2026-11-01T04:00:00Z", "2026-11-02T05:00:00Z"},
        {"Atlantic/Azores", "2026-10-24T20:00:00Z", "2026-10-25T00:00:00Z", "2026-10-26T01:00:00Z"},
        {"Pacific/Apia", "2011-12-30T06:00:00Z", "2011-12-30T10:00:00Z", "2011-12-31T10:00:00Z"},
        {"/usr/share/zoneinfo/Asia/Tokyo", "2026-03-10T09:00:00Z", "2026-03-10T15:00:00Z",
         "2026-03-11T15:00:00Z"},
        {"UTC-5", "2026-03-10T14:00:00Z", "2026-03-10T19:00:00Z", "2026-03-11T19:00:00Z"},
        {":UTC3:30", "2026-03-11T00:00:00Z", "2026-03-11T03:30:00Z", "2026-03-12T03:30:00Z"},
        // In summer since the second Sunday of March.
        {"EST5EDT4", "2026-03-11T00:00:00Z", "2026-03-11T04:00:00Z", "2026-03-12T04:00:00Z"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-28T20:00:00Z", "2026-03-28T23:00:00Z",
         "2026-03-29T22:00:00Z"},
        {"", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
        {"Nowhere", "2026-03-10T20:00:00Z", "2026-03-11T00:00:00Z", "2026-03-12T00:00:00Z"},
    };
    const QByteArray before = qgetenv("TZ");
    Scheduler ofTheSystem(source, prefs, clock);
    for (const auto &[zone, now, startOfTomorrow, startOfDayAfter] : rows) {
        qputenv("TZ", zone);
        source.fetches.clear();
        clock.time = at(now);
        ofTheSystem.refresh();
        const std::vector<FakeEventSource::Fetch> expected{
            {at(now), at(startOfTomorrow), std::nullopt},
            {at(startOfTomorrow), at(startOfDayAfter), std::nullopt}};
        EXPECT_EQ(source.fetches, expected) << zone << ' ' << now;
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
}

TEST_F(SchedulerDays, tomorrowIsShownInTheEveningWhenNothingIsLeft)
{
    const std::tuple<const char *, const char *, bool> rows[] = {
        {"UTC", "2026-03-10T17:59:59.999Z", false},
        {"UTC", "2026-03-10T18:00:00Z", true},
        {"Europe/Berlin", "2026-03-10T16:30:00Z", false}, // half past five
        // A day of 25 hours: eighteen of them are over one hour earlier.
        {"Europe/Berlin", "2026-10-25T16:59:00Z", false},
        {"Europe/Berlin", "2026-10-25T17:00:00Z", true},
    };
    for (const auto &[zone, now, isShown] : rows) {
        scheduler.setTimeZone(QTimeZone(zone));
        source.fetches.clear();
        source.events = {makeMeeting("Tomorrow", at(now) + Seconds(16 * 3600))};
        refreshAt(now);
        EXPECT_EQ(titles(scheduler.tomorrowsMeetings()), isShown ? Titles{"Tomorrow"} : Titles()) << now;
        EXPECT_EQ(source.fetches.size(), isShown ? 2u : 1u) << now;
        EXPECT_FALSE(scheduler.next()) << now;
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
    const std::pair<std::set<std::string>, Selection> rows[] = {{{}, std::nullopt},
                                                                {{"home"}, Selection({"work"})},
                                                                {{"gone"}, Selection({"work", "home"})},
                                                                {{"home", "work"}, Selection(std::in_place)}};
    for (const auto &[disabled, selection] : rows) {
        prefs.setDisabledCalendarIDs(disabled);
        source.fetches.clear();
        source.listings = 0;
        refreshAt("2026-03-10T19:00:00Z");
        ASSERT_EQ(source.fetches.size(), 2u);
        EXPECT_EQ(source.fetches[0].calendarIDs, selection);
        EXPECT_EQ(source.fetches[1].calendarIDs, selection);
        EXPECT_EQ(source.listings, selection ? 1 : 0);
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

} // namespace mivora
