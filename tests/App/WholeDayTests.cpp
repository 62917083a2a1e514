#include "WholeDay.h"

#include <gmock/gmock.h>

// A user's day from the first start on, and the day after: at each time, what there is to see.
namespace mivora {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

using Texts = std::vector<std::string>;

struct Step
{
    const char *time;
    const char *what;
    /// What the user or the world does at that time; may be empty.
    std::function<void()> happens;
    Seen shown;
};

const std::string zoom = "https://zoom.us/j/111111111";
const std::string meet = "https://meet.google.com/abc-defg-hij";
const std::string teams = "https://teams.microsoft.com/l/meetup-join/19%3ameeting_x%40thread.v2/0";
const std::string syncLink = "https://zoom.us/j/444444444";
const std::string retroLink = "https://zoom.us/j/222222222";
const std::string brunchLink = "https://zoom.us/j/333333333";

std::string linked(const std::string &link)
{
    return "URL:" + link + "\r\n";
}

// In the night after this Saturday, clocks in Europe are put forward: the Sunday has 23 hours.
void fillCalendars(const CalendarFolder &calendars)
{
    calendars.write("work/standup.ics", eventText("Standup", "20260328T080000Z", linked(zoom)));
    calendars.write("work/review.ics", eventText("Design review", "20260328T083000Z", linked(meet)));
    calendars.write("work/sync.ics", eventText("Sync", "20260328T083000Z", linked(syncLink)));
    calendars.write("work/one.ics", eventText("One-to-one", "20260328T130000Z", linked(teams)));
    calendars.write("work/retro.ics", eventText("Retro", "20260328T150000Z", linked(retroLink)));
    calendars.write("home/lunch.ics", eventText("Lunch", "20260328T110000Z"));
    calendars.write("home/brunch.ics", eventText("Brunch", "20260329T080000Z", linked(brunchLink)));
    calendars.write("work/kickoff.ics", eventText("Kickoff", "20260330T080000Z", linked(zoom)));
    // Half past twelve wherever one is.
    calendars.write("home/walk.ics", eventText("Walk", "20260329T123000"));
}

const std::string standup = "09:00 Standup · Zoom";
const std::string standupNow = "09:00 Standup · now · Zoom";
const std::string review = "09:30 Design review · Google Meet";
const std::string reviewNow = "09:30 Design review · now · Google Meet";
const std::string sync = "09:30 Sync · Zoom";
const std::string syncNow = "09:30 Sync · now · Zoom";
const std::string lunch = "(12:00 Lunch)";
const std::string oneToOne = "14:00 One-to-one · Teams";
const std::string oneToOneMoved = "15:00 One-to-one · Teams";
const std::string oneToOneNow = "15:00 One-to-one · now · Teams";
const std::string retro = "16:00 Retro · Zoom";
const std::string brunch = "10:00 Brunch · Zoom";
const std::string brunchNow = "10:00 Brunch · now · Zoom";
const std::string walk = "(12:30 Walk)";
const std::string nothing = "(No more meetings today)";
const Texts wholeDay{standup, review, sync, lunch, oneToOne, retro};

/// Each step's time and event, then what is seen must be what the step says.
void live(WholeDay &day, const std::vector<Step> &steps)
{
    for (const Step &step : steps) {
        SCOPED_TRACE(std::string(step.time) + ": " + step.what);
        day.forgetOpened();
        day.passUntil(at(step.time));
        if (step.happens)
            step.happens();
        // Files are read and buttons are pressed in the event loop's own time.
        waitFor([&] { return day.seen() == step.shown; }, std::chrono::seconds(5));
        EXPECT_EQ(day.seen(), step.shown);
    }
}

std::vector<Step> firstRun(WholeDay &day)
{
    const Texts noAccess{"Allow Calendar access…"};
    return {
        {"2026-03-28T08:00:00+01:00", "first start", [&] { day.start(); }, {"?", noAccess, "", {}}},
        {"2026-03-28T08:00:20+01:00",
         "the welcome is read",
         [&] { day.pressInWalkthrough("Continue"); },
         {"?", noAccess, "", {}}},
        {"2026-03-28T08:00:40+01:00",
         "access is given",
         [&] { day.pressInWalkthrough("Allow Calendar Access"); },
         {"Standup · 1h", wholeDay, "", {}}},
    };
}

std::vector<Step> morning(WholeDay &day)
{
    return {
        {"2026-03-28T08:30:00+01:00", "half an hour left", {}, {"Standup · 30m", wholeDay, "", {}}},
        {"2026-03-28T08:58:30+01:00", "shortly before the panel", {}, {"Standup · 2m", wholeDay, "", {}}},
        {"2026-03-28T08:59:00+01:00",
         "the panel comes",
         {},
         {"Standup · 1m !", wholeDay, "Standup, Starts in 1m, Zoom", {}}},
        {"2026-03-28T08:59:20+01:00",
         "snoozed",
         [&] { day.pressInPanel("Snooze 1 min"); },
         {"Standup · now !", wholeDay, "", {}}},
        {"2026-03-28T09:00:00+01:00",
         "begins while it is snoozed",
         {},
         {"Standup · now !", {standupNow, review, sync, lunch, oneToOne, retro}, "", {}}},
        {"2026-03-28T09:00:20+01:00",
         "the snooze is over",
         {},
         {"Standup · now !",
          {standupNow, review, sync, lunch, oneToOne, retro},
          "Standup, Starting now, Zoom",
          {}}},
        {"2026-03-28T09:02:30+01:00",
         "joined by the panel",
         [&] { day.pressInPanel("Join"); },
         {"Standup · now !", {standupNow, review, sync, lunch, oneToOne, retro}, "", {zoom}}},
        {"2026-03-28T09:29:00+01:00",
         "the next one comes while the first still runs",
         {},
         {"Standup · now !",
          {standupNow, review, sync, lunch, oneToOne, retro},
          "Design review, Starts in 1m, Google Meet",
          {}}},
        {"2026-03-28T09:31:00+01:00",
         "joined by the menu",
         [&] { day.chooseInMenu("09:30 Design review"); },
         {"Standup · now !",
          {standupNow, reviewNow, syncNow, lunch, oneToOne, retro},
          "Sync, Started 1m ago, Zoom",
          {meet}}},
        {"2026-03-28T09:31:30+01:00",
         "one at the same time, dismissed",
         [&] { day.pressInPanel("Dismiss"); },
         {"Standup · now !", {standupNow, reviewNow, syncNow, lunch, oneToOne, retro}, "", {}}},
        {"2026-03-28T10:00:00+01:00",
         "the first one ends",
         {},
         {"Design review · now !", {reviewNow, syncNow, lunch, oneToOne, retro}, "", {}}},
        {"2026-03-28T10:30:00+01:00",
         "all three are over",
         {},
         {"Lunch · 1h 30m", {lunch, oneToOne, retro}, "", {}}},
    };
}

std::vector<Step> afternoon(WholeDay &day)
{
    const Texts free{nothing};
    return {
        {"2026-03-28T12:00:00+01:00",
         "a meeting without a link",
         {},
         {"Lunch · now !", {"(12:00 Lunch · now)", oneToOne, retro}, "", {}}},
        {"2026-03-28T13:00:00+01:00",
         "a shortcut is chosen",
         [&] { day.setShortcut(); },
         {"One-to-one · 1h", {oneToOne, retro}, "", {}}},
        {"2026-03-28T13:58:00+01:00",
         "moved by an hour",
         [&] {
             day.calendars().write("work/one.ics",
                                   eventText("One-to-one", "20260328T140000Z", linked(teams)));
         },
         {"One-to-one · 1h 2m", {oneToOneMoved, retro}, "", {}}},
        {"2026-03-28T14:01:00+01:00",
         "not at its old time",
         {},
         {"One-to-one · 59m", {oneToOneMoved, retro}, "", {}}},
        {"2026-03-28T14:59:30+01:00",
         "joined by the shortcut",
         [&] { day.pressShortcut(); },
         {"One-to-one · now !", {oneToOneMoved, retro}, "", {teams}}},
        {"2026-03-28T15:59:00+01:00",
         "the panel for the last one",
         {},
         {"One-to-one · now !", {oneToOneNow, retro}, "Retro, Starts in 1m, Zoom", {}}},
        {"2026-03-28T15:59:10+01:00",
         "which is cancelled",
         [&] {
             day.calendars().write("work/.retro.tmp", eventText("Retro", "20260328T150000Z",
                                                                linked(retroLink) + "STATUS:CANCELLED\r\n"));
             day.calendars().rename("work/.retro.tmp", "work/retro.ics");
         },
         {"One-to-one · now !", {oneToOneNow}, "", {}}},
        {"2026-03-28T16:00:00+01:00", "all is over", {}, {"", free, "", {}}},
        {"2026-03-28T17:59:30+01:00", "not evening yet", [&] { day.pressShortcut(); }, {"", free, "", {}}},
    };
}

std::vector<Step> nightAndNextDay(WholeDay &day)
{
    const Texts lookAhead{nothing, "-", "(Tomorrow)", brunch, walk};
    return {
        {"2026-03-28T18:00:00+01:00", "evening", {}, {"", lookAhead, "", {}}},
        {"2026-03-28T23:59:59+01:00", "the last second of the day", {}, {"", lookAhead, "", {}}},
        {"2026-03-28T23:59:59+01:00",
         "midnight",
         [&] { day.beginDay(at("2026-03-29T00:00:00+01:00")); },
         {"Brunch · 9h", {brunch, walk}, "", {}}},
        {"2026-03-29T00:10:00+01:00",
         "asleep until shortly before it",
         [&] { day.sleepUntil(at("2026-03-29T09:59:40+02:00")); },
         {"Brunch · now !", {brunch, walk}, "Brunch, Starting now, Zoom", {}}},
        {"2026-03-29T10:05:00+02:00",
         "dismissed",
         [&] { day.pressInPanel("Dismiss"); },
         {"Brunch · now !", {brunchNow, walk}, "", {}}},
        {"2026-03-29T10:10:00+02:00",
         "an hour to the west",
         [&] { day.travelTo("Europe/London"); },
         {"Brunch · now !", {"09:00 Brunch · now · Zoom", walk}, "", {}}},
        {"2026-03-29T09:15:00+01:00",
         "started anew, which forgets that it was dismissed",
         [&] { day.restart(); },
         {"Brunch · now !", {"09:00 Brunch · now · Zoom", walk}, "Brunch, Started 15m ago, Zoom", {}}},
        {"2026-03-29T09:16:00+01:00",
         "joined by the shortcut, which is remembered",
         [&] { day.pressShortcut(); },
         {"Brunch · now !", {"09:00 Brunch · now · Zoom", walk}, "", {brunchLink}}},
        {"2026-03-29T10:00:00+01:00",
         "the walk is at the new half past twelve",
         {},
         {"Walk · 2h 30m", {walk}, "", {}}},
        {"2026-03-29T13:30:00+01:00", "nothing is left", {}, {"", {nothing}, "", {}}},
        {"2026-03-29T22:00:00+01:00",
         "evening, elsewhere",
         {},
         {"", {nothing, "-", "(Tomorrow)", "09:00 Kickoff · Zoom"}, "", {}}},
        {"2026-03-29T22:30:00+01:00",
         "asleep over midnight, while a meeting is moved",
         [&] {
             day.calendars().write("work/kickoff.ics",
                                   eventText("Kickoff", "20260330T073000Z", linked(zoom)));
             day.sleepUntil(at("2026-03-30T08:00:00+01:00"));
         },
         {"Kickoff · 30m", {"08:30 Kickoff · Zoom"}, "", {}}},
    };
}

} // namespace

TEST(WholeDayTest, showsAndOpensWhatIsRightFromTheFirstStartToTheNextDay)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars());

    live(day, firstRun(day));
    EXPECT_TRUE(day.isWalkthroughShown());
    day.pressInWalkthrough("Continue");
    day.pressInWalkthrough("Start Using Mivora");
    EXPECT_TRUE(waitFor([&] { return !day.isWalkthroughShown(); }));

    live(day, morning(day));
    live(day, afternoon(day));
    EXPECT_THAT(day.menuCommands(), testing::Contains("Join Next Meeting ⇧⌘V"));
    live(day, nightAndNextDay(day));
    EXPECT_FALSE(day.isWalkthroughShown()) << "the first run was done once";
    EXPECT_THAT(day.menuCommands(), testing::Contains("Join Next Meeting ⇧⌘V"));

    EXPECT_THAT(day.panelHistory(),
                ElementsAre("08:59:00 Standup", "08:59:20 -", "09:00:20 Standup", "09:02:30 -",
                            "09:29:00 Design review", "09:31:00 Sync", "09:31:30 -", "14:59:00 One-to-one",
                            "14:59:30 -", "15:59:00 Retro", "15:59:10 -", "09:59:40 Brunch", "10:05:00 -",
                            "09:15:00 Brunch", "09:16:00 -"));
    EXPECT_THAT(day.allOpened(), ElementsAre(zoom, meet, teams, brunchLink));
    for (const char *title :
         {"Standup", "review", "Sync", "Lunch", "One-to-one", "Retro", "Brunch", "Walk", "Kickoff"})
        EXPECT_THAT(day.written(), Not(HasSubstr(title)));
    EXPECT_THAT(day.written(), HasSubstr("hasCompletedOnboarding=true"));
}

} // namespace mivora
