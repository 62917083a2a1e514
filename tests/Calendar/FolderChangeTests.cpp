#include "Calendar/CalendarFolder.h"

#include <QElapsedTimer>
#include <gmock/gmock.h>

namespace mivora {

namespace {

using Action = void (*)(const CalendarFolder &);
using Titles = std::vector<std::string>;

struct ChangeStep
{
    const char *what;
    Action action;
    Titles titles;
};

} // namespace

TEST(FolderChanges, areSeenOneAfterTheOther)
{
    const CalendarFolder folder;
    folder.write("root/work/a.ics", eventText("A"));
    LoadedStore loaded({folder.path("root")});
    ASSERT_EQ(loaded.titles(), Titles{"A"});
    const std::vector<ChangeStep> steps{
        {"created", [](const auto &f) { f.write("root/work/b.ics", eventText("B")); }, {"A", "B"}},
        {"changed in place", [](const auto &f) { f.write("root/work/b.ics", eventText("B2")); }, {"A", "B2"}},
        {"moved to another day",
         [](const auto &f) { f.write("root/work/b.ics", eventText("B2", "20260720T090000Z")); },
         {"A"}},
        {"replaced by rename",
         [](const auto &f) {
             f.write("root/work/b.ics.tmp", eventText("B3"));
             f.rename("root/work/b.ics.tmp", "root/work/b.ics");
         },
         {"A", "B3"}},
        {"renamed", [](const auto &f) { f.rename("root/work/b.ics", "root/work/c.ics"); }, {"A", "B3"}},
        {"hidden by rename", [](const auto &f) { f.rename("root/work/c.ics", "root/work/.c.ics"); }, {"A"}},
        {"a link", [](const auto &f) { f.link(f.path("root/work/.c.ics"), "root/work/l.ics"); }, {"A", "B3"}},
        {"link deleted", [](const auto &f) { f.remove("root/work/l.ics"); }, {"A"}},
        {"a new folder", [](const auto &f) { f.write("root/home/h.ics", eventText("H")); }, {"A", "H"}},
        {"another file in it",
         [](const auto &f) { f.write("root/home/i.ics", eventText("I")); },
         {"A", "H", "I"}},
        {"folder renamed", [](const auto &f) { f.rename("root/home", "root/house"); }, {"A", "H", "I"}},
        {"its file changed",
         [](const auto &f) { f.write("root/house/h.ics", eventText("H2")); },
         {"A", "H2", "I"}},
        {"folder replaced",
         [](const auto &f) {
             f.write("new/n.ics", eventText("N"));
             f.rename("root/house", "old");
             f.rename("new", "root/house");
         },
         {"A", "N"}},
        {"folder deleted", [](const auto &f) { f.remove("root/house"); }, {"A"}},
        {"an account", [](const auto &f) { f.write("root/acme/team/t.ics", eventText("T")); }, {"A", "T"}},
        {"a file in the root", [](const auto &f) { f.write("root/r.ics", eventText("R")); }, {"A", "R", "T"}},
        {"it changes", [](const auto &f) { f.write("root/r.ics", eventText("R2")); }, {"A", "R2", "T"}},
        {"it goes", [](const auto &f) { f.remove("root/r.ics"); }, {"A", "T"}},
        {"the last file goes", [](const auto &f) { f.remove("root/work/a.ics"); }, {"T"}},
        {"the root goes", [](const auto &f) { f.rename("root", "away"); }, {}},
        {"the root comes back", [](const auto &f) { f.rename("away", "root"); }, {"T"}},
        {"the root is replaced",
         [](const auto &f) {
             f.write("other/work/o.ics", eventText("O"));
             f.rename("root", "away");
             f.rename("other", "root");
         },
         {"O"}},
    };
    for (const ChangeStep &step : steps) {
        step.action(folder);
        EXPECT_TRUE(loaded.waitForTitles(step.titles))
            << step.what << ": " << testing::PrintToString(loaded.titles());
    }
    EXPECT_EQ(loaded.store().calendars().size(), 1u);
}

TEST(FolderChanges, noticeARootThatAppearsLater)
{
    const CalendarFolder folder;
    LoadedStore loaded({folder.path("never"), folder.path("not/yet/there")});
    const auto answer = [&] {
        std::optional<bool> granted;
        loaded.store().requestFullAccess([&](bool isGranted) { granted = isGranted; });
        EXPECT_FALSE(granted);
        EXPECT_TRUE(waitFor([&] { return granted.has_value(); }));
        return granted;
    };
    EXPECT_EQ(loaded.store().authorizationStatus(), AuthorizationStatus::denied);
    EXPECT_EQ(answer(), false);
    folder.write("not/yet/there/work/a.ics", eventText("A"));
    EXPECT_TRUE(loaded.waitForTitles({"A"}));
    EXPECT_EQ(loaded.store().authorizationStatus(), AuthorizationStatus::fullAccess);
    EXPECT_EQ(answer(), true);
}

TEST(FolderChanges, takeOverWhatAFolderSaysAboutItself)
{
    const CalendarFolder folder;
    folder.write("work/a.ics", eventText("A", "20260310T090000Z", "ATTENDEE:mailto:me@example.com\r\n"));
    LoadedStore loaded({folder.path()});
    folder.write("work/displayname", "Work");
    folder.write("work/color", "#010203");
    folder.write("work/owner", "me@example.com");
    EXPECT_TRUE(waitFor([&] {
        const std::vector<StoreCalendar> calendars = loaded.store().calendars();
        return calendars.size() == 1 && calendars[0].title == "Work" && calendars[0].color == Color{1, 2, 3};
    }));
    EXPECT_TRUE(waitFor([&] {
        const StoreEvents events =
            loaded.store().events(at("2026-03-10T00:00:00Z"), at("2026-03-11T00:00:00Z"), std::nullopt);
        return events.size() == 1 && events[0]->attendees.at(0).isCurrentUser;
    }));
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
    EXPECT_EQ(loaded.titles(), (Titles{"A", "Home"})) << "the same version";
    write("work/b.ics", "B", "SEQUENCE:1\r\nDTSTAMP:20260102T000000Z\r\n");
    EXPECT_TRUE(loaded.waitForTitles({"B", "Home"})) << "a later stamp";
    write("work/a.ics", "A", "SEQUENCE:2\r\nDTSTAMP:20250101T000000Z\r\n", "20260720T090000Z");
    EXPECT_TRUE(loaded.waitForTitles({"Home"})) << "a later version, of another day";
    folder.remove("work/a.ics");
    EXPECT_TRUE(loaded.waitForTitles({"B", "Home"})) << "without it";
}

TEST(FolderChanges, leaveTheEventsOfAFileThatIsHalfWrittenForAMoment)
{
    const CalendarFolder folder;
    const std::string text = eventText("A");
    folder.write("work/a.ics", text);
    LoadedStore loaded({folder.path()});
    for (const std::string &half : {std::string(), text.substr(0, text.size() / 2)}) {
        QElapsedTimer timer;
        timer.start();
        folder.write("work/a.ics", half);
        waitAWhile(std::chrono::milliseconds(30));
        folder.write("work/a.ics", text);
        const bool wasBrief = timer.elapsed() < 200;
        waitAWhile(std::chrono::milliseconds(350));
        if (wasBrief) {
            EXPECT_EQ(loaded.changes(), 0) << half;
        }
    }
    // What stays like that is meant.
    folder.write("work/a.ics", "");
    EXPECT_TRUE(loaded.waitForTitles({}));
}

TEST(FolderChanges, endWithTheStoreWhileItLoads)
{
    const CalendarFolder folder;
    for (int i = 0; i < 500; ++i)
        folder.write("work/" + std::to_string(i) + ".ics", eventText("E" + std::to_string(i)));
    for (int i = 0; i < 20; ++i) {
        FolderStore store(
            {{{folder.path()}}, windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()), {}});
        waitAWhile(std::chrono::milliseconds(i % 4));
    }
}

} // namespace mivora
