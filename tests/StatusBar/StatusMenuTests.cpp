#include "StatusBar/StatusMenu.h"

#include "MeetingTexts/MeetingTexts.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

using Lines = std::vector<std::string>;

/// One line an entry: "---" for a separator, "(…)" around what is disabled, "⌘" before a key equivalent.
Lines lines(const MenuContents &contents)
{
    Lines result;
    for (const MenuEntry &entry : statusMenu(contents)) {
        QString line = entry.separator ? QStringLiteral("---") : entry.title;
        if (!entry.enabled && !entry.separator)
            line = QLatin1Char('(') + line + QLatin1Char(')');
        if (!entry.keyEquivalent.isEmpty())
            line += QStringLiteral(" ⌘") + entry.keyEquivalent;
        result.push_back(line.toStdString());
    }
    return result;
}

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
        contents.now = at("2026-03-10T10:00:00Z");
        contents.formatTime = [](Timestamp time) { return shortTime(time, QTimeZone::utc(), QLocale::c()); };
    }

    const Timestamp nine = at("2026-03-10T09:00:00Z");
    const std::vector<CalendarInfo> calendars{{"work", "Work", "", {}}, {"home", "Home", "", {}}};
    MenuContents contents;
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
        EXPECT_EQ(lines(contents), withEnd({row.line})) << row.name;
    }
}

TEST_F(StatusMenu, showsTodayThenTomorrow)
{
    const std::vector today{withLink(makeMeeting("Sync", ten)), makeMeeting("Lunch", ten + Seconds(7200))};
    const std::vector tomorrow{makeMeeting("Breakfast", nine + Seconds(86400))};
    const Lines todayLines{"10:00  Sync  · now  · Zoom", "(12:00  Lunch)"};
    const Lines noneToday{"(No more meetings today)"};
    EXPECT_EQ(lines(contents), withEnd(noneToday));
    contents.today = today;
    EXPECT_EQ(lines(contents), withEnd(todayLines));
    contents.today = {};
    contents.tomorrow = tomorrow;
    EXPECT_EQ(lines(contents), withEnd({noneToday[0], "---", "(Tomorrow)", "(09:00  Breakfast)"}));
}

TEST_F(StatusMenu, saysWhenNoCalendarIsLeft)
{
    const std::string none = "(No more meetings today)";
    const std::string hint = "No calendars selected — open Settings…";

    const struct
    {
        const char *name;
        std::span<const CalendarInfo> calendars;
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
        EXPECT_EQ(lines(contents), withEnd(row.isSaid ? Lines{none, hint} : Lines{none})) << row.name;
    }
}

TEST_F(StatusMenu, withoutAccessOffersToGetItAndNothingElseOfCalendars)
{
    const std::vector today{makeMeeting("Sync", ten)};
    contents.today = today;
    contents.disabledCalendarIDs = {"work"};
    contents.authorization = CalendarAuthorization::notDetermined;
    EXPECT_EQ(lines(contents), withEnd({"Allow Calendar access…"}));
    contents.authorization = CalendarAuthorization::denied;
    EXPECT_EQ(lines(contents), withEnd({"Calendar access needed…"}));
}

TEST_F(StatusMenu, showsShortcutAndUpdatesWhereThereAreAny)
{
    contents.joinHotKey = QStringLiteral("⇧⌘V");
    contents.canCheckForUpdates = true;
    EXPECT_EQ(lines(contents),
              (Lines{"(No more meetings today)", "---", "Join Next Meeting   ⇧⌘V", "Settings… ⌘,",
                     "Check for Updates…", "More Kelo apps…", "---", "Quit Mivora ⌘q"}));
}

TEST_F(StatusMenu, everyEnabledEntryDoesSomethingAndMeetingsKnowThemselves)
{
    const std::vector today{withLink(makeMeeting("Sync", ten)), makeMeeting("Lunch", ten)};
    contents.today = today;
    contents.calendars = calendars;
    contents.disabledCalendarIDs = {"work", "home"};
    contents.joinHotKey = QStringLiteral("⇧⌘V");
    contents.canCheckForUpdates = true;
    std::vector<MenuCommand> commands;
    for (const MenuEntry &entry : statusMenu(contents)) {
        EXPECT_EQ(entry.enabled, entry.command != MenuCommand::none) << entry.title.toStdString();
        EXPECT_EQ(entry.meeting,
                  entry.command == MenuCommand::joinMeeting ? std::optional(today[0]) : std::nullopt);
        if (entry.enabled)
            commands.push_back(entry.command);
    }
    EXPECT_EQ(commands,
              (std::vector{MenuCommand::joinMeeting, MenuCommand::openCalendarSettings,
                           MenuCommand::joinNextMeeting, MenuCommand::openSettings,
                           MenuCommand::checkForUpdates, MenuCommand::openMakerPage, MenuCommand::quit}));
    contents.authorization = CalendarAuthorization::notDetermined;
    EXPECT_EQ(statusMenu(contents).front().command, MenuCommand::allowCalendarAccess);
    contents.authorization = CalendarAuthorization::denied;
    EXPECT_EQ(statusMenu(contents).front().command, MenuCommand::openCalendarPrivacy);
}

} // namespace mivora
