#include "StatusBar/StatusMenu.h"

#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

using Lines = std::vector<std::string>;

/// The lines that every menu ends with, after those that are its own.
Lines withEnd(Lines lines)
{
    for (const char *line : {"---", "Settings… ⌘,", "More Kelo apps…", "---", "Quit Mivora ⌘q"})
        lines.push_back(line);
    return lines;
}

} // namespace

class StatusMenu : public testing::Test
{
public:
    StatusMenu()
    {
        contents.authorization = CalendarAuthorization::granted;
        contents.now = ten;
        contents.locale = QLocale::c();
    }

    /// One line an entry: "---" for a separator, "(…)" around what is disabled, "⌘" before a key equivalent.
    Lines lines()
    {
        menu.removeAll();
        fillStatusMenu(menu, contents, actions);
        Lines result;
        for (const kelo::ClosureMenuItem &item : menu.items()) {
            EXPECT_TRUE(item.isSeparator || item.isEnabled == bool(item.action)) << item.title.toStdString();
            QString line = item.isSeparator ? QStringLiteral("---") : item.title;
            if (!item.isEnabled && !item.isSeparator)
                line = QLatin1Char('(') + line + QLatin1Char(')');
            if (!item.keyEquivalent.isEmpty())
                line += QStringLiteral(" ⌘") + item.keyEquivalent;
            result.push_back(line.toStdString());
        }
        return result;
    }

    std::function<void()> note(const char *action)
    {
        return [this, action] { chosen.push_back(action); };
    }

    const Timestamp nine = at("2026-03-10T09:00:00Z");
    const std::vector<CalendarInfo> calendars{{"work", "Work", "", {}}, {"home", "Home", "", {}}};
    Lines chosen;
    MenuContents contents;
    MenuActions actions{.join = [this](const Meeting &m) { chosen.push_back("join " + m.title); },
                        .joinNext = note("join next"),
                        .allowCalendarAccess = note("allow"),
                        .openCalendarPrivacy = note("privacy"),
                        .openCalendarSettings = note("calendar settings"),
                        .openSettings = note("settings"),
                        .checkForUpdates = note("updates"),
                        .openMakerPage = note("maker"),
                        .quit = note("quit")};
    kelo::Menu menu;
};

TEST_F(StatusMenu, listsMeetingsWithTimeStateAndService)
{
    const struct
    {
        const char *name;
        Meeting meeting;
        const char *line;
    } rows[] = {
        {"ahead", makeMeeting("Lunch", at("2026-03-10T12:30:00Z")), "(12:30  Lunch)"},
        {"begins now", makeMeeting("Lunch", ten), "(10:00  Lunch  · now)"},
        {"ends now", makeMeeting("Lunch", nine, Seconds(3600)), "(09:00  Lunch)"},
        {"running, joinable", withLink(makeMeeting("Sync", nine, Seconds(3601))),
         "09:00  Sync  · now  · Zoom"},
        {"over, joinable", withLink(makeMeeting("Sync", nine), Service::meet), "09:00  Sync  · Google Meet"},
        {"lines in a title", makeMeeting("A\r\nB\tC", nine), "(09:00  A B C)"},
    };

    for (const auto &row : rows) {
        contents.today = {&row.meeting, 1};
        EXPECT_EQ(lines(), withEnd({row.line})) << row.name;
    }
    const std::vector tomorrow{makeMeeting("Breakfast", nine + Seconds(86400))};
    contents.today = {};
    contents.tomorrow = tomorrow;
    EXPECT_EQ(lines(), withEnd({"(No more meetings today)", "---", "(Tomorrow)", "(09:00  Breakfast)"}));
}

TEST_F(StatusMenu, saysWhenNoCalendarIsLeft)
{
    const std::string none = "(No more meetings today)";
    const std::string hint = "No calendars selected — open Settings…";

    const struct
    {
        const char *name;
        std::vector<CalendarInfo> calendars;
        std::set<std::string> disabled;
        bool isSaid;
    } rows[] = {
        {"all on", calendars, {}, false},
        {"one off", calendars, {"work"}, false},
        {"all off", calendars, {"work", "home", "old"}, true},
        {"none known, none off", {}, {}, false},
        {"none known, one off", {}, {"old"}, true},
    };

    for (const auto &row : rows) {
        contents.calendars = row.calendars;
        contents.disabledCalendarIDs = row.disabled;
        EXPECT_EQ(lines(), withEnd(row.isSaid ? Lines{none, hint} : Lines{none})) << row.name;
    }
}

TEST_F(StatusMenu, everyEntryDoesWhatItSays)
{
    const std::vector today{withLink(makeMeeting("Sync", ten)), makeMeeting("Lunch", ten)};
    contents.today = today;
    contents.calendars = calendars;
    contents.disabledCalendarIDs = {"work", "home"};
    contents.joinHotKey = QStringLiteral("⇧⌘V");
    contents.canCheckForUpdates = true;
    const auto chooseAll = [&] {
        chosen.clear();
        for (const kelo::ClosureMenuItem &item : menu.items()) {
            if (item.action)
                item.action();
        }
        return chosen;
    };
    EXPECT_EQ(lines(),
              (Lines{"10:00  Sync  · now  · Zoom", "(10:00  Lunch  · now)",
                     "No calendars selected — open Settings…", "---", "Join Next Meeting   ⇧⌘V",
                     "Settings… ⌘,", "Check for Updates…", "More Kelo apps…", "---", "Quit Mivora ⌘q"}));
    EXPECT_EQ(chooseAll(),
              (Lines{"join Sync", "calendar settings", "join next", "settings", "updates", "maker", "quit"}));
    contents.joinHotKey.reset();
    contents.canCheckForUpdates = false;
    contents.authorization = CalendarAuthorization::notDetermined;
    EXPECT_EQ(lines(), withEnd({"Allow Calendar access…"}));
    EXPECT_EQ(chooseAll().front(), "allow");
    contents.authorization = CalendarAuthorization::denied;
    EXPECT_EQ(lines(), withEnd({"Calendar access needed…"}));
    EXPECT_EQ(chooseAll().front(), "privacy");
}

} // namespace mivora
