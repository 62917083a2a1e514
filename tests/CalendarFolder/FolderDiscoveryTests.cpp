#include "CalendarFolder/LoadedStore.h"

#include <QStandardPaths>
#include <gmock/gmock.h>
#include <set>
#include <sys/stat.h>

namespace mivora {

TEST(FolderDiscovery, tellsCalendarsFromAccountsAndOtherFolders)
{
    using Files = std::vector<std::pair<std::string, std::string>>;
    const std::string event = eventText("Event");
    const std::tuple<const char *, Files, std::vector<std::string>> layouts[] = {
        {"a folder of events", {{"work/a.ics", event}}, {"work|work||-"}},
        {"its properties",
         {{"work/a.ics", event},
          {"work/displayname", " Work \r\nline 2"},
          {"work/color", "\xef\xbb\xbfTomato\n"}},
         {"work|Work||#ff6347"}},
        {"an account",
         {{"acme/work/a.ics", event}, {"acme/team/b.ics", event}, {"acme/displayname", "Acme Inc."}},
         {"acme/team|team|Acme Inc.|-", "acme/work|work|Acme Inc.|-"}},
        {"an account without a name", {{"acme/work/a.ics", event}}, {"acme/work|work|acme|-"}},
        {"calendars without events",
         {{"acme/color", "red"},
          {"acme/new/color", "red"},
          {"new/displayname", "New"},
          {"work/a.ics", event}},
         {"acme/new|new|acme|#ff0000", "new|New||-", "work|work||-"}},
        {"folders of neither", {{"notes/readme.txt", "x"}, {"displayname", "Mine"}}, {}},
        {"too deep", {{"a/b/c/d.ics", event}}, {}},
        {"files in the root",
         {{"holidays.ics", "BEGIN:VCALENDAR\nX-WR-CALNAME:Public "
                           "holidays\nX-APPLE-CALENDAR-COLOR:#0A0B0CFF\nEND:VCALENDAR\n"},
          {"plain.ics", event}},
         {"holidays.ics|Public holidays||#0a0b0c", "plain.ics|plain||-"}},
        {"in colour", {{"plain.ics", event}, {"color", "RebeccaPurple"}}, {"plain.ics|plain||#663399"}},
        {"hidden and temporary",
         {{".git/a.ics", event}, {"work/.a.ics", event}, {"work/a.ics.tmp", event}, {"old~/a.ics", event}},
         {}},
    };
    for (const auto &[what, files, calendars] : layouts) {
        const CalendarFolder folder;
        for (const auto &[name, text] : files)
            folder.write(name, text);
        LoadedStore loaded({folder.path()});
        EXPECT_EQ(loaded.calendars(), calendars) << what;
    }
}

TEST(FolderDiscovery, followsLinksButNotInCirclesAndReadsFilesOnly)
{
    const CalendarFolder elsewhere, folder;
    elsewhere.write("shared/b.ics", eventText("Shared"));
    folder.link(elsewhere.path("shared"), "team");
    folder.write("work/a.ics", eventText("Event"));
    folder.makeFolder("work/folder.ics");
    folder.link(folder.path(), "loop");
    folder.link(folder.path("work"), "again");
    folder.link(folder.path("work"), "work/up");
    folder.link(folder.path("gone.ics"), "work/dangling.ics");
    folder.link(folder.path("work/self.ics"), "work/self.ics");
    folder.link("/dev/zero", "work/zero.ics");
    ASSERT_EQ(::mkfifo(folder.path("work/pipe.ics").c_str(), 0600), 0);
    LoadedStore loaded({folder.path()});
    EXPECT_EQ(loaded.store().calendars().size(), 2u);
    EXPECT_THAT(loaded.titles(), testing::ElementsAre("Event", "Shared"));
}

TEST(FolderDiscovery, knowsTheUserByTheMostCertainAddress)
{
    const std::string event = "work/a.ics", name = "work/displayname", address = "name@example.com";
    const std::string wr = "X-WR-OWNER:wr@example.com\r\n", cal = "X-WR-CALNAME:cal@example.com\r\n";

    // Who it is, the file, lines of its calendar, and other files.
    const std::tuple<std::string, std::string, std::string, std::map<std::string, std::string>> cases[] = {
        {"owner", event, wr, {{"work/owner", "MAILTO:Owner@example.com"}, {name, address}}},
        {"wr", event, wr, {{name, address}}},
        {"name", event, cal, {{name, address}}},
        {"cal", event, cal, {{name, "Work"}}},
        {"me", event, "X-WR-CALNAME:Work at@ home\r\n", {{name, "@work"}}},
        {"name", address + ".ics", {}, {}},
        {"cal", "cal@example.com/work/a.ics", {}, {}},
    };
    for (const auto &[user, file, calendarLines, others] : cases) {
        const CalendarFolder folder;
        std::string attendees = "ATTENDEE;PARTSTAT=DECLINED:/principals/1\r\n";
        for (const std::string one : {"owner", "wr", "name", "cal", "me"})
            attendees += "ATTENDEE;PARTSTAT=" + std::string(one == user ? "ACCEPTED" : "DECLINED") +
                         ":mailto:" + one + "@example.com\r\n";
        std::string text = eventText("Event", "20260310T090000Z", attendees);
        folder.write(file, text.insert(text.find("BEGIN:VEVENT"), calendarLines));
        for (const auto &[other, line] : others)
            folder.write(other, line);
        LoadedStore loaded({folder.path()}, {"", "mailto:Me@example.com"});
        EXPECT_EQ(loaded.meetings().at(0).participation, Participation::accepted) << user << file;
    }
}

TEST(FolderDiscovery, isNotHeldUpByWhatIsBrokenOrHuge)
{
    const CalendarFolder folder;
    folder.write("work/empty.ics", "");
    const std::string good = eventText("Good", "20260310T090000Z", "RRULE:FREQ=DAILY\r\n");
    std::string broken = eventText("Broken");
    broken.replace(broken.find("DTSTART:"), 24, "DTSTART:yesterday");
    folder.write("work/bro\n\u009b\u202eken.ics", good + broken + broken);
    // Larger than what is read at a time.
    const std::string padding = "X-PADDING:" + std::string(20 << 20, 'x') + "\r\n";
    folder.write("huge.ics", eventText("Old", "20200101T090000Z", padding) + eventText("Huge"));
    testing::internal::CaptureStderr();
    LoadedStore loaded({folder.path()});
    EXPECT_THAT(loaded.titles(), testing::ElementsAre("Good", "Huge"));
    // Reading it again for other days is no news.
    EXPECT_TRUE(waitFor([&] { return !loaded.titles("2026-08-10T00:00:00Z").empty(); }));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2) << log; // the empty one too
    EXPECT_THAT(log, testing::HasSubstr("bro   ken.ics: line "));
}

TEST(CalendarRoots, prefixesIdentifiersWithoutRegardToOtherRoots)
{
    const std::string home = QDir::homePath().toStdString();
    const std::string data =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString();

    using Paths = std::vector<std::string>;
    const std::tuple<const char *, Paths, Paths> cases[] = {
        {"", {}, {home + "/.calendars <>", data + "/calendars <calendars:>"}},
        {"/ignored", {"/x/./y/", "/z"}, {"/x/y <>", "/z <z:>"}},
        {"/a/b/:/c/../d", {}, {"/a/b <b:>", "/d <d:>"}},
        {"/a/b:/c/b:/a/b", {}, {"/a/b </a/b:>", "/c/b </c/b:>", "/a/b </a/b:>"}}};
    for (const auto &[environment, chosen, roots] : cases) {
        qputenv("MIVORA_CALENDARS", environment);
        std::vector<std::string> found;
        for (const CalendarRoot &root : calendarRoots(chosen))
            found.push_back(root.path + " <" + root.prefix + '>');
        EXPECT_EQ(found, roots);
    }
    qunsetenv("MIVORA_CALENDARS");
    // In each of two roots, a folder and a file.
    const CalendarFolder folder;
    for (const char *name : {"one/work/a.ics", "one/b.ics", "two/work/c.ics", "two/b.ics"})
        folder.write(name, eventText(name));
    LoadedStore loaded({folder.path("one"), folder.path("two")});
    std::set<std::string> ids;
    for (const auto &meeting : loaded.meetings())
        ids.insert(meeting.calendarID + " of " + meeting.title);
    EXPECT_THAT(ids, testing::ElementsAre("b.ics of one/b.ics", "two:b.ics of two/b.ics",
                                          "two:work of two/work/c.ics", "work of one/work/a.ics"));
}

} // namespace mivora
