#include "StatusBar/StatusMenu.h"
#include "StatusBar/StatusText.h"
#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

/// What every menu ends with.
const std::string end = "---|Settings… ⌘,|More Kelo apps…|---|Quit Mivora ⌘q|";

class StatusMenu : public testing::Test
{
public:
    /// The entries, each with "|" behind it: "---" for a separator, "(…)" around what is disabled, "⌘" before
    /// a key equivalent.
    std::string text()
    {
        menu.removeAll();
        fillStatusMenu(menu, contents, actions);
        std::string text;
        for (const kelo::ClosureMenuItem &item : menu.items()) {
            const std::string title = item.isSeparator ? "---" : item.title.toStdString();
            EXPECT_TRUE(item.isSeparator || item.isEnabled == bool(item.action)) << title;
            text += item.isEnabled ? title : "(" + title + ")";
            if (!item.keyEquivalent.isEmpty())
                text += " ⌘" + item.keyEquivalent.toStdString();
            text += '|';
        }
        return text;
    }

    /// What comes of choosing every entry of that menu.
    std::string chooseAll()
    {
        chosen.clear();
        for (const kelo::ClosureMenuItem &item : menu.items()) {
            if (item.action)
                item.action();
        }
        return chosen;
    }

    std::function<void()> note(const char *action)
    {
        return [this, action] { (chosen += action) += '|'; };
    }

    const Timestamp nine = at("2026-03-10T09:00:00Z");
    std::string chosen;
    MenuContents contents{.authorization = CalendarAuthorization::granted,
                          .today = {},
                          .tomorrow = {},
                          .now = ten,
                          .calendars = {},
                          .disabledCalendarIDs = {},
                          .joinHotKey = {},
                          .locale = QLocale::c()};
    MenuActions actions{.join = [this](const Meeting &meeting) { note(meeting.title.c_str())(); },
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

} // namespace

TEST_F(StatusMenu, listsMeetingsWithTimeStateAndService)
{
    const std::vector today{
        makeMeeting("Ends now", nine, Seconds(3600)),
        withLink(makeMeeting("Running", nine, Seconds(3601))),
        withLink(makeMeeting("Over", nine), Service::meet),
        makeMeeting("Begins now", ten),
        makeMeeting("A\r\nB\tC", at("2026-03-10T12:30:00Z")),
    };
    contents.today = today;
    EXPECT_EQ(text(), "(09:00  Ends now)|09:00  Running  · now  · Zoom|09:00  Over  · Google Meet|"
                      "(10:00  Begins now  · now)|(12:30  A B C)|" +
                          end);
    const std::vector tomorrow{makeMeeting("Breakfast", nine + Seconds(86400))};
    contents.today = {};
    contents.tomorrow = tomorrow;
    EXPECT_EQ(text(), "(No more meetings today)|---|(Tomorrow)|(09:00  Breakfast)|" + end);
}

TEST_F(StatusMenu, saysWhenNoCalendarIsLeft)
{
    const std::vector<CalendarInfo> two{{"work", "Work", "", {}}, {"home", "Home", "", {}}};

    const struct
    {
        const char *name;
        std::vector<CalendarInfo> calendars;
        std::set<std::string> disabled;
        const char *said;
    } rows[] = {
        {"all on", two, {}, ""},
        {"one off", two, {"work"}, ""},
        {"all off", two, {"work", "home", "old"}, "No calendars selected — open Settings…|"},
        {"none known, none off", {}, {}, ""},
        {"none known, one off", {}, {"old"}, "No calendars selected — open Settings…|"},
    };

    for (const auto &row : rows) {
        contents.calendars = row.calendars;
        contents.disabledCalendarIDs = row.disabled;
        EXPECT_EQ(text(), "(No more meetings today)|" + (row.said + end)) << row.name;
    }
}

TEST_F(StatusMenu, everyEntryDoesWhatItSays)
{
    const std::vector today{withLink(makeMeeting("Sync", ten))};
    contents.today = today;
    contents.disabledCalendarIDs = {"work"};
    contents.joinHotKey = QStringLiteral("⇧⌘V");
    contents.canCheckForUpdates = true;
    EXPECT_EQ(text(), "10:00  Sync  · now  · Zoom|No calendars selected — open Settings…|---|"
                      "Join Next Meeting   ⇧⌘V|Settings… ⌘,|Check for Updates…|More Kelo apps…|---|"
                      "Quit Mivora ⌘q|");
    EXPECT_EQ(chooseAll(), "Sync|calendar settings|join next|settings|updates|maker|quit|");
    contents.joinHotKey.reset();
    contents.canCheckForUpdates = false;
    contents.authorization = CalendarAuthorization::notDetermined;
    EXPECT_EQ(text(), "Allow Calendar access…|" + end);
    EXPECT_EQ(chooseAll(), "allow|settings|maker|quit|");
    contents.authorization = CalendarAuthorization::denied;
    EXPECT_EQ(text(), "Calendar access needed…|" + end);
    EXPECT_EQ(chooseAll(), "privacy|settings|maker|quit|");
    contents.isNothingToRead = true;
    EXPECT_EQ(text(), "No calendar found…|" + end);
    EXPECT_EQ(chooseAll(), "calendar settings|settings|maker|quit|");
}

TEST(StatusText, countsDownAndTurnsUrgent)
{
    const Meeting review = makeMeeting("Design\r\nreview", ten);

    const struct
    {
        Seconds left;
        int width;
        const char *title;
        bool urgent;
        bool isDiscreet = false;
    } rows[] = {
        {Seconds(3901), 24, " Design review · 1h 6m", false},
        {Seconds(300), 8, " Design… · 5m", false},
        {Seconds(300), 6, " Meeti… · 5m", false, true},
        {Seconds(60.5), 24, " Design review · 2m", false},
        {Seconds(60), 13, " Design review · 1m", true},
        {Seconds(59.5), 1, " … · now", true},
        {Seconds(-1799.5), 24, " Design review · now", true},
        {Seconds(-1800), 24, " Design review · now", false},
    };

    for (const auto &row : rows) {
        const TitleOptions options{.width = row.width, .isDiscreet = row.isDiscreet};
        const auto text = statusText(review, options, CalendarAuthorization::granted, ten - row.left);
        EXPECT_EQ(text.title.toStdString(), row.title) << row.left.count();
        EXPECT_EQ(text.urgent, row.urgent) << row.left.count();
    }
}

TEST(StatusText, isTheIconAloneWithoutMeetingOrWish)
{
    const StatusText calm{{}, false, QStringLiteral("calendar.badge.clock"), {}};
    const StatusText needy{{},
                           false,
                           QStringLiteral("calendar.badge.exclamationmark"),
                           QStringLiteral("Mivora needs Calendar access")};
    const TitleOptions hidden{.isShown = false};
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::granted, ten), calm);
    EXPECT_EQ(statusText(makeMeeting("M", ten), hidden, CalendarAuthorization::granted, ten), calm);
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::denied, ten), needy);
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::notDetermined, ten), needy);
    EXPECT_EQ(statusText({}, {}, CalendarAuthorization::denied, ten, true).toolTip,
              QStringLiteral("Mivora found no calendar"));
}

} // namespace mivora
