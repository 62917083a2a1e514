#include "App/RunningInstance.h"
#include "MeetingTexts/LocalDay.h"
#include "WholeDay.h"
#include "support/ProcessFigures.h"

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
    /// A day of March 2026 and the user's local time.
    const char *time;
    const char *what;
    /// Without a menu, the menu isn't looked at.
    Seen shown;
    /// What the user or the world does at that time.
    std::function<void()> happens{};
};

const std::string zoom = "https://zoom.us/j/111111111";
const std::string meet = "https://meet.google.com/abc-defg-hij";
const std::string teams = "https://teams.microsoft.com/l/meetup-join/19%3ameeting_x%40thread.v2/0";
const std::string syncLink = "https://zoom.us/j/444444444";
const std::string retroLink = "https://zoom.us/j/222222222";
const std::string brunchLink = "https://zoom.us/j/333333333";

Timestamp local(const char *time)
{
    const auto named = QDateTime::fromString(QLatin1String("2026-03-") + QLatin1String(time), Qt::ISODate);
    return timestampFromSeconds(
        double(QDateTime(named.date(), named.time(), userTimeZone()).toSecsSinceEpoch()));
}

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
        day.passUntil(local(step.time));
        if (step.happens)
            step.happens();
        Seen seen;
        const auto isRight = [&] {
            seen = day.seen();
            if (step.shown.menu.empty())
                seen.menu.clear();
            return seen == step.shown;
        };
        // Files are read and buttons are pressed in the event loop's own time.
        waitFor(isRight, std::chrono::seconds(5));
        EXPECT_EQ(seen, step.shown);
    }
}

std::vector<Step> firstRun(WholeDay &day)
{
    const Texts noAccess{"Allow Calendar access…"};
    const auto press = [&](const char *button) { return [&day, button] { day.pressInWalkthrough(button); }; };
    return {
        {"28T08:00", "first start", {"?", noAccess}, [&] { day.start(); }},
        {"28T08:00:20", "the welcome is read", {"?", noAccess}, press("Continue")},
        {"28T08:00:40", "access is given", {"Standup · 1h", wholeDay}, press("Allow Calendar Access")},
    };
}

std::vector<Step> morning(WholeDay &day)
{
    const Texts duringStandup{standupNow, review, sync, lunch, oneToOne, retro};
    const Texts duringAll{standupNow, reviewNow, syncNow, lunch, oneToOne, retro};
    const auto press = [&](const char *button) { return [&day, button] { day.pressInPanel(button); }; };
    return {
        {"28T08:59", "the panel comes", {"Standup · 1m !", wholeDay, "Standup, Starts in 1m, Zoom"}},
        {"28T08:59:20", "snoozed", {"Standup · now !", wholeDay}, press("Snooze 1 min")},
        {"28T09:00:20", "no more snoozed", {"Standup · now !", duringStandup, "Standup, Starting now, Zoom"}},
        {"28T09:02:30", "joined", {"Standup · now !", duringStandup, "", {zoom}}, press("Join")},
        {"28T09:29",
         "the next one comes while the first still runs",
         {"Standup · now !", duringStandup, "Design review, Starts in 1m, Google Meet"}},
        {"28T09:31",
         "joined by the menu",
         {"Standup · now !", duringAll, "Sync, Started 1m ago, Zoom", {meet}},
         [&] { day.chooseInMenu("09:30 Design review"); }},
        {"28T09:31:30",
         "dismissed by command",
         {"Standup · now !", duringAll},
         [&] { day.command("dismiss"); }},
        {"28T10:30", "all three are over", {"Lunch · 1h 30m", {lunch, oneToOne, retro}}},
    };
}

std::vector<Step> afternoon(WholeDay &day)
{
    const Texts free{nothing};
    const auto move = [&] {
        day.calendars().write("work/one.ics", eventText("One-to-one", "20260328T140000Z", linked(teams)));
    };
    const auto cancel = [&] {
        const std::string cancelled = linked(retroLink) + "STATUS:CANCELLED\r\n";
        day.calendars().write("work/.retro.tmp", eventText("Retro", "20260328T150000Z", cancelled));
        day.calendars().rename("work/.retro.tmp", "work/retro.ics");
    };
    const auto pressShortcut = [&] { day.pressShortcut(); };
    return {
        {"28T12:00", "without a link", {"Lunch · now !", {"(12:00 Lunch · now)", oneToOne, retro}}},
        {"28T13:00",
         "a shortcut is chosen",
         {"One-to-one · 1h", {oneToOne, retro}},
         [&] { day.setShortcut(); }},
        {"28T13:58", "moved by an hour", {"One-to-one · 1h 2m", {oneToOneMoved, retro}}, move},
        {"28T14:59:30",
         "joined by the shortcut",
         {"One-to-one · now !", {oneToOneMoved, retro}, "", {teams}},
         pressShortcut},
        {"28T15:59",
         "the panel for the last one",
         {"One-to-one · now !", {oneToOneNow, retro}, "Retro, Starts in 1m, Zoom"}},
        {"28T15:59:10", "which is cancelled", {"One-to-one · now !", {oneToOneNow}}, cancel},
        {"28T17:59:30", "not evening yet", {"", free}, pressShortcut},
    };
}

std::vector<Step> nightAndNextDay(WholeDay &day)
{
    const Texts lookAhead{nothing, "-", "(Tomorrow)", brunch, walk};
    const std::string brunchThere = "09:00 Brunch · now · Zoom";
    const auto moveAndSleep = [&] {
        day.calendars().write("work/kickoff.ics", eventText("Kickoff", "20260330T073000Z", linked(zoom)));
        day.sleepUntil(local("30T08:00"));
    };
    return {
        {"28T18:00", "evening", {"", lookAhead}},
        {"28T23:59:59", "the last second of the day", {"", lookAhead}},
        {"28T23:59:59",
         "midnight",
         {"Brunch · 9h", {brunch, walk}},
         [&] { day.sleepUntil(local("29T00:00")); }},
        {"29T00:10",
         "asleep until shortly before it",
         {"Brunch · now !", {brunch, walk}, "Brunch, Starting now, Zoom"},
         [&] { day.sleepUntil(local("29T09:59:40")); }},
        {"29T10:05",
         "dismissed",
         {"Brunch · now !", {brunchNow, walk}},
         [&] { day.pressInPanel("Dismiss"); }},
        {"29T10:10",
         "an hour to the west",
         {"Brunch · now !", {brunchThere, walk}},
         [&] { day.travelTo("Europe/London"); }},
        {"29T09:15",
         "started anew, which forgets that it was dismissed",
         {"Brunch · now !", {brunchThere, walk}, "Brunch, Started 15m ago, Zoom"},
         [&] { day.restart(); }},
        {"29T09:16",
         "joined by the shortcut, which is remembered",
         {"Brunch · now !", {brunchThere, walk}, "", {brunchLink}},
         [&] { day.pressShortcut(); }},
        {"29T10:00", "the walk is at the new half past twelve", {"Walk · 2h 30m", {walk}}},
        {"29T22:00", "evening, elsewhere", {"", {nothing, "-", "(Tomorrow)", "09:00 Kickoff · Zoom"}}},
        {"29T22:30",
         "asleep over midnight, while a meeting is moved",
         {"Kickoff · 30m", {"08:30 Kickoff · Zoom"}},
         moveAndSleep},
    };
}

/// From the first start on a Saturday to the Monday after it.
void liveTheStory()
{
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

    for (const char *title :
         {"Standup", "review", "Sync", "Lunch", "One-to-one", "Retro", "Brunch", "Walk", "Kickoff"})
        EXPECT_THAT(day.written(), Not(HasSubstr(title)));
    EXPECT_THAT(day.written(), HasSubstr("hasCompletedOnboarding"));
}

class WholeDayTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
    }
};

} // namespace

TEST_F(WholeDayTest, showsAndOpensWhatIsRightAndLeavesNothingBehind)
{
    constexpr std::size_t growthAllowed = 256 * 1024;
    liveTheStory();
    // What is made once for the whole process is there by now.
    liveTheStory();
    const auto before = support::ProcessFigures::now();
    for (int round = 0; round < 2 && !HasFailure(); ++round)
        liveTheStory();
    const auto after = support::ProcessFigures::now();
    EXPECT_LE(after.bytes, before.bytes + growthAllowed);
    EXPECT_LE(after.descriptors, before.descriptors);
    EXPECT_LE(after.threads, before.threads);
}

TEST_F(WholeDayTest, tellsOfItsAgendaOnceSomebodyHasAsked)
{
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars());
    day.skipFirstRun();
    day.passUntil(local("28T08:00"));
    day.start();
    RunningInstance follower(day.bus().connection());
    EXPECT_TRUE(follower.isThere());
    follower.follow();
    std::vector<std::string> titles;
    QObject::connect(&follower, &RunningInstance::agendaChanged, [&](const QJsonObject &agenda) {
        titles.push_back(
            agenda[QLatin1String("statusItem")][QLatin1String("title")].toString().toStdString());
    });
    day.passUntil(local("28T08:30"));
    day.askForAgenda();
    day.passUntil(local("28T08:32:30"));
    EXPECT_TRUE(waitFor([&] { return titles.size() == 2; }));
    EXPECT_THAT(titles, ElementsAre(" Standup · 29m", " Standup · 28m"));
}

} // namespace mivora
