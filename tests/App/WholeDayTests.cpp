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

TEST(WholeDayTest, makesTheAgendaForThoseWhoFollowItAsLongAsTheyDo)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    WholeDay day("Europe/Berlin");
    day.skipFirstRun();
    day.passUntil(at("2026-03-10T08:00:00+01:00"));
    day.start();
    const auto isMade = [&] {
        const int before = day.agendasMade();
        day.passUntil(day.now() + std::chrono::seconds(30));
        return day.agendasMade() > before;
    };
    EXPECT_FALSE(isMade());
    std::optional one = day.bus().connection(), other = day.bus().connection();
    const auto leave = [](std::optional<QDBusConnection> &follower) {
        QDBusConnection::disconnectFromBus(follower->name());
        follower.reset();
    };
    day.askForAgenda(*one);
    day.askForAgenda(*other);
    EXPECT_TRUE(isMade());
    leave(one);
    waitAWhile(std::chrono::milliseconds(200));
    EXPECT_TRUE(isMade()) << "for the other one";
    leave(other);
    EXPECT_TRUE(waitFor([&] { return !isMade(); }));
}

TEST(WholeDayTest, keepsItsHeadWhenTheClockIsSet)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    WholeDay day("Europe/Berlin");
    for (const auto &[title, start] : {std::pair("Standup", "20260310T080000Z"),
                                       {"Review", "20260310T090000Z"},
                                       {"Talk", "20260310T110000Z"},
                                       {"Workshop", "20260310T130000Z"},
                                       {"Night shift", "20260310T223000Z"},
                                       {"Early call", "20260310T231500Z"}})
        day.calendars().write(std::string("work/") + title + ".ics", eventText(title, start, linked(zoom)));
    day.skipFirstRun();
    day.passUntil(at("2026-03-10T08:58:00+01:00"));
    day.start();

    struct Moment
    {
        const char *time;
        std::function<void()> happens;
        std::string tray;
        std::string panel;
    };

    const auto dismiss = [&] { day.pressInPanel("Dismiss"); };
    const auto setTo = [&](const char *time) { return [&day, time] { day.setClock(at(time)); }; };
    const std::vector<Moment> moments{
        {"2026-03-10T08:59:00+01:00", {}, "Standup · 1m !", "Standup, Starts in 1m, Zoom"},
        {"2026-03-10T08:59:30+01:00", dismiss, "Standup · now !", ""},
        {"2026-03-10T09:30:00+01:00", setTo("2026-03-10T08:30:00+01:00"), "Standup · 30m", ""},
        {"2026-03-10T09:10:00+01:00", {}, "Standup · now !", ""},
        {"2026-03-10T09:59:00+01:00", {}, "Standup · now !", "Review, Starts in 1m, Zoom"},
        // Snoozed until ten: when it is an hour earlier, it still is.
        {"2026-03-10T09:59:00+01:00", [&] { day.pressInPanel("Snooze 1 min"); }, "Standup · now !", ""},
        {"2026-03-10T09:59:10+01:00", setTo("2026-03-10T08:59:10+01:00"), "Standup · now !", ""},
        {"2026-03-10T09:59:30+01:00", {}, "Standup · now !", ""},
        {"2026-03-10T10:00:00+01:00", {}, "Review · now !", "Review, Starting now, Zoom"},
        {"2026-03-10T10:00:30+01:00", [&] { day.pressInPanel("Join"); }, "Review · now !", ""},
        // What was decided about a meeting that has ended is forgotten, about a running one not.
        {"2026-03-10T10:20:00+01:00", setTo("2026-03-10T09:20:00+01:00"), "Standup · now !",
         "Standup, Started 20m ago, Zoom"},
        {"2026-03-10T09:20:30+01:00", dismiss, "Standup · now !", ""},
        {"2026-03-10T10:30:00+01:00", {}, "Review · now !", ""},
        {"2026-03-10T11:10:00+01:00", setTo("2026-03-10T12:10:00+01:00"), "Talk · now !",
         "Talk, Started 10m ago, Zoom"},
        {"2026-03-10T12:10:30+01:00", setTo("2026-03-10T11:10:30+01:00"), "Talk · 50m", ""},
        {"2026-03-10T12:00:00+01:00", {}, "Talk · now !", "Talk, Starting now, Zoom"},
        {"2026-03-10T12:30:00+01:00", [&] { day.sleepUntil(at("2026-03-10T14:05:00+01:00")); },
         "Workshop · now !", "Workshop, Started 5m ago, Zoom"},
        {"2026-03-10T23:29:00+01:00", {}, "Night shift · 1m !", "Night shift, Starts in 1m, Zoom"},
        {"2026-03-10T23:29:30+01:00", dismiss, "Night shift · now !", ""},
        {"2026-03-10T23:59:30+01:00", {}, "Night shift · now !", ""},
        {"2026-03-11T00:14:00+01:00", {}, "Night shift · now !", "Early call, Starts in 1m, Zoom"},
        // Back over midnight: the early call is tomorrow's again.
        {"2026-03-11T00:14:30+01:00", setTo("2026-03-10T23:50:00+01:00"), "Night shift · now !", ""},
        {"2026-03-11T00:14:00+01:00", {}, "Night shift · now !", "Early call, Starts in 1m, Zoom"},
    };
    for (const Moment &moment : moments) {
        SCOPED_TRACE(moment.time);
        day.passUntil(at(moment.time));
        if (moment.happens)
            moment.happens();
        const auto isRight = [&] {
            const Seen seen = day.seen();
            return seen.tray == moment.tray && seen.panel == moment.panel;
        };
        waitFor(isRight, std::chrono::seconds(5));
        EXPECT_EQ(day.seen().tray, moment.tray);
        EXPECT_EQ(day.seen().panel, moment.panel);
    }
    EXPECT_THAT(day.allOpened(), ElementsAre(zoom));
}

TEST(WholeDayTest, bearsADayWithThousandsOfMeetings)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    constexpr int count = 5000;
    WholeDay day("Etc/UTC");
    std::string events;
    for (int i = 0; i < count; ++i) {
        const QString number = QStringLiteral("%1").arg(i, 4, 10, QLatin1Char('0'));
        const QString start = QTime(11, 0).addSecs(i).toString(QStringLiteral("HHmmss"));
        events += QStringLiteral("BEGIN:VEVENT\r\nUID:%1\r\nSUMMARY:Meeting %1\r\nDTSTART:20260310T%2Z\r\n"
                                 "DURATION:PT1H\r\nLOCATION:%3\r\nEND:VEVENT\r\n")
                      .arg(number, start, QString::fromStdString(zoom))
                      .toStdString();
    }
    day.calendars().write("work/all.ics",
                          "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + events + "END:VCALENDAR\r\n");
    day.skipFirstRun();
    day.passUntil(at("2026-03-10T10:58:00Z"));
    day.start();
    ASSERT_TRUE(waitFor([&] { return day.application().scheduler().todaysMeetings().size() == count; },
                        std::chrono::minutes(1)));
    const std::vector<std::string> menu = day.seen().menu;
    ASSERT_EQ(menu.size(), std::size_t(count));
    EXPECT_EQ(menu.back(), "12:23 Meeting 4999 · Zoom");
    // The last one that is due has the panel, whatever is due besides.
    day.passUntil(at("2026-03-10T10:59:00Z"));
    EXPECT_EQ(day.seen().panel, "Meeting 0000, Starts in 1m, Zoom");
    day.passUntil(at("2026-03-10T11:00:00Z"));
    EXPECT_EQ(day.seen().panel, "Meeting 0060, Starts in 1m, Zoom");
    day.pressInPanel("Dismiss");
    EXPECT_EQ(day.seen().panel, "Meeting 0059, Starting now, Zoom");
    day.chooseInMenu("12:23 Meeting 4999");
    EXPECT_TRUE(waitFor([&] { return day.allOpened() == Texts{zoom}; }));
}

} // namespace mivora
