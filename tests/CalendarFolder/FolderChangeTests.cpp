#include "CalendarFolder/LoadedStore.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>

namespace mivora {

namespace {

namespace fs = std::filesystem;
using Path = fs::path;
using Titles = std::vector<std::string>;

/// Does at random to the calendar folders "one" and "two" what programs do to theirs.
class FolderTurmoil final
{
public:
    explicit FolderTurmoil(unsigned seed) : m_chance(seed)
    {
        for (const char *name : {"one/work", "two/acme/team", "elsewhere/folder"})
            m_folder.makeFolder(name);
    }

    std::vector<std::string> roots() const { return {m_folder.path("one"), m_folder.path("two")}; }

    /// What was done so far, a line for each step.
    const std::string &story() const { return m_story; }

    void step()
    {
        const Path file = anyFile(), otherFile = anyFile(), folder = anyFolder(), otherFolder = anyFolder();
        const Path root = m_folder.path(oneOf({"one", "two"})), away = root.string() + " away";
        const std::pair<const char *, std::function<void()>> kinds[] = {
            {"write", [&] { std::ofstream(file) << text(); }},
            {"begin to write", [&] { beginWriting(file); }},
            {"end writing", [&] { finish(); }},
            {"truncate", [&] { std::ofstream(file) << text().substr(0, below(2) * 150); }},
            {"remove", [&] { fs::remove(file, m_error); }},
            {"rename", [&] { fs::rename(file, otherFile, m_error); }},
            {"link", [&] { fs::create_hard_link(file, otherFile, m_error); }},
            {"put in place", [&] { putInPlace(folder / "new.tmp", file); }},
            {"link by name", [&] { fs::create_symlink(file, otherFile, m_error); }},
            {"name", [&] { std::ofstream(folder / "displayname") << "Name\nsecond line"; }},
            {"owner", [&] { std::ofstream(folder / "owner") << "me@example.com"; }},
            {"make folder", [&] { fs::create_directories(folder, m_error); }},
            {"remove folder", [&] { fs::remove_all(folder, m_error); }},
            {"rename folder", [&] { fs::rename(folder, otherFolder, m_error); }},
            {"link folder", [&] { fs::create_directory_symlink(folder, otherFolder, m_error); }},
            {"take root away", [&] { fs::rename(root, away, m_error); }},
            {"take root back", [&] { fs::rename(away, root, m_error); }},
            {"pause", [&] { waitFor([] { return false; }, std::chrono::milliseconds(below(25))); }},
        };
        // Half of all is writing.
        const auto &[name, act] = kinds[below(2) ? below(4) : below(int(std::size(kinds)))];
        m_story.append("\n").append(name);
        for (const Path &path : {file, otherFile, folder, otherFolder, root})
            m_story.append(" ").append(path.string());
        act();
    }

    /// Ends what is begun, so that all of it can be known.
    void finish()
    {
        for (auto &[file, rest] : m_begun)
            file << rest;
        m_begun.clear();
    }

private:
    std::size_t below(int count)
    {
        return std::size_t(std::uniform_int_distribution(0, count - 1)(m_chance));
    }

    const char *oneOf(std::initializer_list<const char *> texts)
    {
        return *(texts.begin() + below(int(texts.size())));
    }

    Path anyFolder()
    {
        return m_folder.path(oneOf({"one", "one/work", "one/home", "two", "two/acme", "two/acme/team",
                                    "two/work", "elsewhere/folder"}));
    }

    Path anyFile()
    {
        return anyFolder() / oneOf({"x.ics", "x.ics", "y.ics", "z.ics", ".x.ics", "x.ics.tmp"});
    }

    std::string text()
    {
        std::string text =
            eventText("Event " + std::to_string(++m_texts),
                      oneOf({"20260310T090000Z", "20260310T140000Z", "20260720T090000Z"}),
                      oneOf({"", "", "RRULE:FREQ=DAILY\r\n", "ATTENDEE:mailto:me@example.com\r\n"}));
        if (below(3) == 0)
            text.insert(text.find("BEGIN:VEVENT"), "X-WR-CALNAME:Name " + std::to_string(m_texts) + "\r\n");
        return text;
    }

    void beginWriting(const Path &file)
    {
        const std::string whole = text();
        const std::size_t part = below(int(whole.size()));
        m_begun.emplace_back(file, whole.substr(part)).first << whole.substr(0, part) << std::flush;
    }

    /// As a careful writer does, who overwrites nothing.
    void putInPlace(const Path &temporary, const Path &file)
    {
        std::ofstream(temporary) << text();
        fs::create_hard_link(temporary, file, m_error);
        fs::remove(temporary, m_error);
    }

    CalendarFolder m_folder;
    std::mt19937 m_chance;
    /// The files that are being written, each with what is still to come.
    std::vector<std::pair<std::ofstream, std::string>> m_begun;
    std::error_code m_error;
    int m_texts = 0;
    std::string m_story;
};

/// All that a store can be asked, a line for each answer.
std::vector<std::string> answersOf(LoadedStore &loaded)
{
    std::vector<std::string> lines{"status " + std::to_string(int(loaded.store().authorizationStatus()))};
    for (const std::string &calendar : loaded.calendars())
        lines.push_back(calendar);
    for (const auto &meeting : loaded.meetings("2026-03-10T00:00:00Z", 2))
        lines.push_back(meeting.calendarID + ": " + meeting.title + ", " + meeting.id +
                        (meeting.participation == Participation::accepted ? ", accepted" : ""));
    std::sort(lines.begin(), lines.end());
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
    const auto write = [&](const char *file, const char *title, const char *version, const char *start) {
        std::string text = eventText(title, start, version);
        text.replace(text.find("UID:"), text.find("\r\nDTSTART") - text.find("UID:"), "UID:same");
        folder.write(file, text);
    };
    const char *const tenth = "20260310T090000Z";
    for (const std::string title : {"work/a", "work/b", "home/a"})
        write((title + ".ics").c_str(), title.c_str(), "SEQUENCE:1\r\n", tenth);
    LoadedStore loaded({folder.path()});
    EXPECT_EQ(loaded.titles(), (Titles{"home/a", "work/b"})) << "the same version";
    write("work/a.ics", "A", "SEQUENCE:2\r\n", "20260720T090000Z");
    EXPECT_TRUE(loaded.waitForTitles({"home/a"})) << "a later version, of another day";
    folder.remove("work/a.ics");
    EXPECT_TRUE(loaded.waitForTitles({"home/a", "work/b"})) << "without it";
    write("work/c.ics", "Moved", "SEQUENCE:2\r\nRECURRENCE-ID:20260310T090000Z\r\n", "20260310T150000Z");
    EXPECT_TRUE(loaded.waitForTitles({"Moved", "home/a"})) << "a day in a file of its own";
}

TEST(FolderChanges, leaveTheEventsOfAFileThatIsHalfWrittenForAMoment)
{
    const CalendarFolder folder;
    const std::string text = eventText("A");
    folder.write("work/a.ics", text);
    LoadedStore loaded({folder.path()}, {}, std::chrono::minutes(1));
    int changes = 0;
    QObject::connect(&loaded.store(), &EventKitSource::changed, [&] { ++changes; });
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
    loaded.store().setTimeZone(QTimeZone("America/New_York"));
    EXPECT_TRUE(waitFor([&] { return loaded.meetings(summer).back().start == at("2026-07-20T14:00:00Z"); }));
    EXPECT_EQ(loaded.meetings(summer).front().start, at("2026-07-20T09:00:00Z"));
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
