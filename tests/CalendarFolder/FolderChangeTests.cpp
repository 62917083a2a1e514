#include "CalendarFolder/FolderTurmoil.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using Titles = std::vector<std::string>;

/// All that a store can be asked, a line for each answer.
std::vector<std::string> answersOf(LoadedStore &loaded)
{
    std::vector<std::string> lines{"status " + std::to_string(int(loaded.store().authorizationStatus()))};
    for (const CalendarInfo &c : loaded.store().calendars())
        lines.push_back(c.id + '|' + c.title + '|' + c.accountTitle + '|' + (c.color ? c.color->hex() : "-"));
    const std::size_t calendars = lines.size();
    for (const auto &meeting : loaded.meetings("2026-03-10T00:00:00Z", 2))
        lines.push_back(meeting->calendarID + ": " + meeting->title + ", " + meeting->id +
                        (meeting->participation == Participation::accepted ? ", accepted" : ""));
    std::sort(lines.begin() + std::ptrdiff_t(calendars), lines.end());
    return lines;
}

} // namespace

TEST(FolderChanges, leaveTheStoreWithTheAnswersOfAFreshLoad)
{
    constexpr int rounds = 6, steps = 40;
    for (unsigned seed = 1; seed <= 8; ++seed) {
        FolderTurmoil turmoil(seed);
        LoadedStore live(turmoil.roots());
        for (int round = 0; round < rounds; ++round) {
            for (int i = 0; i < steps; ++i)
                turmoil.step();
            turmoil.finish();
            LoadedStore fresh(turmoil.roots());
            const auto wanted = answersOf(fresh);
            waitFor([&] { return answersOf(live) == wanted; }, std::chrono::seconds(3));
            ASSERT_EQ(answersOf(live), wanted) << "seed " << seed << turmoil.story();
        }
    }
}

TEST(FolderChanges, leaveTheLatestVersionOfAnEventInTwoFiles)
{
    const CalendarFolder folder;
    const auto write = [&](const char *file, const char *title, const char *version,
                           const char *start = "20260310T090000Z") {
        std::string text = eventText(title, start, version);
        text.replace(text.find("UID:"), text.find("\r\nDTSTART") - text.find("UID:"), "UID:same");
        folder.write(file, text);
    };
    const char *const first = "SEQUENCE:1\r\nDTSTAMP:20260101T000000Z\r\n";
    write("work/b.ics", "B", first);
    write("work/a.ics", "A", first);
    write("home/a.ics", "Home", first);
    LoadedStore loaded({folder.path()});
    EXPECT_EQ(loaded.titles(), (Titles{"B", "Home"})) << "the same version";
    write("work/a.ics", "A", "SEQUENCE:1\r\nDTSTAMP:20260102T000000Z\r\n");
    EXPECT_TRUE(loaded.waitForTitles({"A", "Home"})) << "a later stamp";
    write("work/b.ics", "B", "SEQUENCE:2\r\nDTSTAMP:20250101T000000Z\r\n", "20260720T090000Z");
    EXPECT_TRUE(loaded.waitForTitles({"Home"})) << "a later version, of another day";
    folder.remove("work/b.ics");
    EXPECT_TRUE(loaded.waitForTitles({"A", "Home"})) << "without it";
    write("work/c.ics", "Moved", "SEQUENCE:2\r\nRECURRENCE-ID:20260310T090000Z\r\n", "20260310T150000Z");
    EXPECT_TRUE(loaded.waitForTitles({"Home", "Moved"})) << "a day in a file of its own";
    write("work/a.ics", "A", "RRULE:FREQ=DAILY\r\n", "20260309T090000Z");
    EXPECT_TRUE(waitFor([&] { return loaded.titles("2026-03-11T00:00:00Z") == Titles{"A"}; }));
    EXPECT_EQ(loaded.titles(), (Titles{"Home", "Moved"})) << "one day of a series";
}

TEST(FolderChanges, leaveTheEventsOfAFileThatIsHalfWrittenForAMoment)
{
    const CalendarFolder folder;
    const std::string text = eventText("A");
    folder.write("work/a.ics", text);
    LoadedStore loaded({folder.path()}, {}, std::chrono::minutes(1));
    int changes = 0;
    QObject::connect(&loaded.store(), &EventStore::changed, [&] { ++changes; });
    int round = 0;
    for (const std::string &half : {std::string(), text.substr(0, text.size() / 2)}) {
        folder.write("work/a.ics", half);
        // What comes after it is seen, and only that.
        const std::string other = "B" + std::to_string(++round);
        folder.write("work/b.ics", eventText(other));
        EXPECT_TRUE(loaded.waitForTitles({"A", other}));
        EXPECT_EQ(changes, round);
    }
}

TEST(FolderChanges, meanOtherDaysAndAnotherZone)
{
    const CalendarFolder folder;
    folder.write("work/daily.ics", eventText("Daily", "20260101T090000Z", "RRULE:FREQ=DAILY\r\n"));
    folder.write("work/summer.ics", eventText("Summer", "20260720T100000"));
    LoadedStore loaded({folder.path()});
    EXPECT_EQ(loaded.titles(), Titles{"Daily"});
    const char *const summer = "2026-07-20T00:00:00Z";
    EXPECT_TRUE(waitFor([&] { return loaded.titles(summer) == Titles{"Daily", "Summer"}; }));
    loaded.store().setTimeZone(zoneNamed("America/New_York"));
    EXPECT_TRUE(waitFor([&] { return loaded.meetings(summer).back()->start == at("2026-07-20T14:00:00Z"); }));
    EXPECT_EQ(loaded.meetings(summer).front()->start, at("2026-07-20T09:00:00Z"));
    EXPECT_EQ(loaded.titles(), Titles{"Daily"}) << "what was asked for first";
}

TEST(FolderChanges, endWithTheStoreWhileItLoads)
{
    const CalendarFolder folder;
    for (int i = 0; i < 500; ++i)
        folder.write("work/" + std::to_string(i) + ".ics", eventText("E" + std::to_string(i)));
    for (int i = 0; i < 20; ++i) {
        FolderLoader loader({.roots = {{folder.path()}}});
        loader.start(windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()), [](const StoreUpdate &) {});
        std::this_thread::sleep_for(std::chrono::milliseconds(i % 4));
    }
}

} // namespace mivora
