#include "Calendar/CalendarFolder.h"
#include "Calendar/folder/ChangeBatch.h"
#include "MeetingTexts/LocalDay.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using std::chrono::milliseconds;

using Titles = std::vector<std::string>;

} // namespace

TEST(FolderWindow, followsTheDaysThatAreAskedFor)
{
    const CalendarFolder folder;
    folder.write("work/daily.ics", eventText("Daily", "20260101T090000Z", "RRULE:FREQ=DAILY\r\n"));
    folder.write("work/summer.ics", eventText("Summer", "20260720T090000Z"));
    folder.write("work/spring.ics", eventText("Spring", "20260310T120000Z"));
    LoadedStore loaded({folder.path()});
    EXPECT_EQ(loaded.titles(), (Titles{"Daily", "Spring"}));
    const auto summer = [&] { return loaded.titles("2026-07-20T00:00:00Z", "2026-07-21T00:00:00Z"); };
    EXPECT_EQ(summer(), Titles{});
    EXPECT_TRUE(waitFor([&] { return loaded.changes() == 1; }));
    EXPECT_EQ(summer(), (Titles{"Daily", "Summer"}));
    // Both are loaded now: asking for them in turn must not load them in turn.
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(loaded.titles(), (Titles{"Daily", "Spring"}));
        summer();
        waitAWhile(milliseconds(20));
    }
    EXPECT_EQ(loaded.changes(), 1);
}

TEST(FolderWindow, isLoadedAheadWhileDaysPass)
{
    const CalendarFolder folder;
    folder.write("work/daily.ics", eventText("Daily", "20260101T090000", "RRULE:FREQ=DAILY\r\n"));
    const QTimeZone zone = zoneNamed("Europe/Berlin");
    LoadedStore loaded({folder.path()}, {}, zone, "2026-03-25T08:00:00Z");
    // Ten days through the change of the clocks: today's and tomorrow's event are always there.
    for (Timestamp now = at("2026-03-25T08:00:00Z"); now < at("2026-04-04T00:00:00Z");
         now += Seconds(6 * 3600)) {
        for (int day = 0; day < 2; ++day) {
            const StoreEvents events = loaded.store().events(startOfDay(now, zone, day),
                                                             startOfDay(now, zone, day + 1), std::nullopt);
            ASSERT_EQ(events.size(), 1u) << secondsSinceEpoch(now);
            EXPECT_EQ(hourOfDay(events[0]->start, zone), 9);
        }
        waitAWhile(milliseconds(5));
    }
    EXPECT_GT(loaded.changes(), 1);
    EXPECT_LT(loaded.changes(), 10);
}

TEST(FolderWindow, meansFloatingTimesAndWholeDaysInTheZone)
{
    const CalendarFolder folder;
    folder.write("work/floating.ics", eventText("Floating", "20260310T090000"));
    folder.write("work/fixed.ics", eventText("Fixed", "20260310T090000Z"));
    LoadedStore loaded({folder.path()});
    const auto start = [&](const char *title) {
        for (const auto &event :
             loaded.store().events(at("2026-03-09T00:00:00Z"), at("2026-03-12T00:00:00Z"), std::nullopt)) {
            if (event->title == title)
                return event->start;
        }
        return Timestamp{};
    };
    EXPECT_EQ(start("Floating"), at("2026-03-10T09:00:00Z"));
    loaded.store().setTimeZone(zoneNamed("America/New_York"));
    EXPECT_TRUE(waitFor([&] { return start("Floating") == at("2026-03-10T13:00:00Z"); }));
    EXPECT_EQ(start("Fixed"), at("2026-03-10T09:00:00Z"));
}

TEST(OccurrenceList, findsWhatOverlaps)
{
    struct Case
    {
        const char *what;
        double start;
        double end;
        bool isFound;
    };

    const std::vector<Case> cases{
        {"before", 0, 50, false},
        {"ends at the start", 0, 100, false},
        {"runs into it", 0, 101, true},
        {"around it", 0, 300, true},
        {"inside", 120, 130, true},
        {"starts at its end", 200, 250, false},
        {"runs out of it", 199, 250, true},
        {"no length at its start", 100, 100, true},
        {"no length inside", 150, 150, true},
        {"no length at its end", 200, 200, false},
        {"no length before", 99, 99, false},
    };
    OccurrenceList list;
    StoreEvents events;
    std::vector<std::string> expected;
    for (const Case &c : cases) {
        auto event = std::make_shared<StoreEvent>();
        event->title = c.what;
        event->start = timestampFromSeconds(c.start);
        event->end = timestampFromSeconds(c.end);
        events.push_back(event);
        if (c.isFound)
            expected.emplace_back(c.what);
    }
    list.change({}, events);
    StoreEvents overlapping;
    list.appendOverlapping(timestampFromSeconds(100), timestampFromSeconds(200), overlapping);
    std::vector<std::string> found;
    for (const auto &event : overlapping)
        found.push_back(*event->title);
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
}

TEST(ChangeBatch, waitsForTheEndOfABurstButNotOfAStorm)
{
    const ChangeBatch::Clock::time_point start{};
    ChangeBatch batch;
    EXPECT_FALSE(batch.due());
    batch.note(start, 1);
    EXPECT_EQ(batch.due(), start + ChangeBatch::quietTime);
    for (int i = 0; i < 100; ++i)
        batch.note(start + milliseconds(i), 1);
    EXPECT_EQ(batch.due(), start + ChangeBatch::longestWait);
    batch.applied(start + milliseconds(100));
    EXPECT_FALSE(batch.due());
    batch.note(start + milliseconds(101), 1);
    EXPECT_EQ(batch.due(), start + milliseconds(100) + ChangeBatch::longestWait);
    batch.applied(start + milliseconds(150));
    batch.note(start + milliseconds(151), 1);
    EXPECT_EQ(batch.due(), start + milliseconds(151) + ChangeBatch::quietTime);
}

} // namespace mivora
