#include "../Calendar/FakeEventStore.h"
#include "MeetingTexts/LocalDay.h"
#include "WholeDay.h"

#include <gmock/gmock.h>

// A user's day from the first start on, and the day after: at each time, what there is to see.
namespace mivora {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

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
        {"28T08:30", "half an hour left", {"Standup · 30m", wholeDay}},
        {"28T08:58:30", "shortly before the panel", {"Standup · 2m", wholeDay}},
        {"28T08:59", "the panel comes", {"Standup · 1m !", wholeDay, "Standup, Starts in 1m, Zoom"}},
        {"28T08:59:20", "snoozed", {"Standup · now !", wholeDay}, press("Snooze 1 min")},
        {"28T09:00", "begins while it is snoozed", {"Standup · now !", duringStandup}},
        {"28T09:00:20", "no more snoozed", {"Standup · now !", duringStandup, "Standup, Starting now, Zoom"}},
        {"28T09:02:30", "joined", {"Standup · now !", duringStandup, "", {zoom}}, press("Join")},
        {"28T09:29",
         "the next one comes while the first still runs",
         {"Standup · now !", duringStandup, "Design review, Starts in 1m, Google Meet"}},
        {"28T09:31",
         "joined by the menu",
         {"Standup · now !", duringAll, "Sync, Started 1m ago, Zoom", {meet}},
         [&] { day.chooseInMenu("09:30 Design review"); }},
        {"28T09:31:30", "one at the same time", {"Standup · now !", duringAll}, press("Dismiss")},
        {"28T10:00", "one ends", {"Design review · now !", {reviewNow, syncNow, lunch, oneToOne, retro}}},
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
        {"28T14:01", "not at its old time", {"One-to-one · 59m", {oneToOneMoved, retro}}},
        {"28T14:59:30",
         "joined by the shortcut",
         {"One-to-one · now !", {oneToOneMoved, retro}, "", {teams}},
         pressShortcut},
        {"28T15:59",
         "the panel for the last one",
         {"One-to-one · now !", {oneToOneNow, retro}, "Retro, Starts in 1m, Zoom"}},
        {"28T15:59:10", "which is cancelled", {"One-to-one · now !", {oneToOneNow}}, cancel},
        {"28T16:00", "all is over", {"", free}},
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
         [&] { day.beginDay(local("29T00:00")); }},
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
        {"29T13:30", "nothing is left", {"", {nothing}}},
        {"29T22:00", "evening, elsewhere", {"", {nothing, "-", "(Tomorrow)", "09:00 Kickoff · Zoom"}}},
        {"29T22:30",
         "asleep over midnight, while a meeting is moved",
         {"Kickoff · 30m", {"08:30 Kickoff · Zoom"}},
         moveAndSleep},
    };
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

TEST_F(WholeDayTest, showsAndOpensWhatIsRightFromTheFirstStartToTheNextDay)
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

TEST_F(WholeDayTest, makesTheAgendaForThoseWhoFollowItAsLongAsTheyDo)
{
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

TEST_F(WholeDayTest, keepsItsHeadWhenTheClockIsSet)
{
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

    const auto press = [&](const char *button) { return [&day, button] { day.pressInPanel(button); }; };
    const auto setTo = [&](const char *time) { return [&day, time] { day.setClock(local(time)); }; };
    live(day, {
                  {"10T08:59", "the panel comes", {"Standup · 1m !", {}, "Standup, Starts in 1m, Zoom"}},
                  {"10T08:59:30", "dismissed", {"Standup · now !"}, press("Dismiss")},
                  {"10T09:30", "an hour back", {"Standup · 30m"}, setTo("10T08:30")},
                  {"10T09:10", "still dismissed", {"Standup · now !"}},
                  {"10T09:59", "the second panel", {"Standup · now !", {}, "Review, Starts in 1m, Zoom"}},
                  {"10T09:59", "snoozed until ten", {"Standup · now !"}, press("Snooze 1 min")},
                  {"10T09:59:10", "an hour earlier it still is", {"Standup · now !"}, setTo("10T08:59:10")},
                  {"10T09:59:30", "and is", {"Standup · now !"}},
                  {"10T10:00", "until ten", {"Review · now !", {}, "Review, Starting now, Zoom"}},
                  {"10T10:00:30", "joined", {"Review · now !", {}, "", {zoom}}, press("Join")},
                  {"10T10:20",
                   "what was decided about one that has ended is forgotten",
                   {"Standup · now !", {}, "Standup, Started 20m ago, Zoom"},
                   setTo("10T09:20")},
                  {"10T09:20:30", "dismissed again", {"Standup · now !"}, press("Dismiss")},
                  {"10T10:30", "about a running one not", {"Review · now !"}},
                  {"10T11:10",
                   "an hour ahead",
                   {"Talk · now !", {}, "Talk, Started 10m ago, Zoom"},
                   setTo("10T12:10")},
                  {"10T12:10:30", "and back", {"Talk · 50m"}, setTo("10T11:10:30")},
                  {"10T12:00", "begins again", {"Talk · now !", {}, "Talk, Starting now, Zoom"}},
                  {"10T12:30",
                   "asleep past the start of one",
                   {"Workshop · now !", {}, "Workshop, Started 5m ago, Zoom"},
                   [&] { day.sleepUntil(local("10T14:05")); }},
                  {"10T23:29", "late", {"Night shift · 1m !", {}, "Night shift, Starts in 1m, Zoom"}},
                  {"10T23:29:30", "dismissed", {"Night shift · now !"}, press("Dismiss")},
                  {"10T23:59:30", "still", {"Night shift · now !"}},
                  {"11T00:14", "early", {"Night shift · now !", {}, "Early call, Starts in 1m, Zoom"}},
                  {"11T00:14:30",
                   "back over midnight: the early call is tomorrow's again",
                   {"Night shift · now !"},
                   setTo("10T23:50")},
                  {"11T00:14", "early again", {"Night shift · now !", {}, "Early call, Starts in 1m, Zoom"}},
              });
    EXPECT_THAT(day.allOpened(), ElementsAre(zoom));
}

TEST_F(WholeDayTest, bearsAStormOfNotifications)
{
    constexpr int turns = 60, notificationsInATurn = 100;
    FakeEventStore *store = nullptr;
    const auto plan = [&](const std::string &title, const char *start) -> StoreEvent & {
        return store->add(title, secondsSinceEpoch(at(start)));
    };
    WholeDay day("Etc/UTC");
    day.setStoreFactory([&](AccessMemory &) {
        auto made = std::make_unique<FakeEventStore>();
        store = made.get();
        plan("Standup", "2026-03-10T09:00:00Z").url = zoom;
        return made;
    });
    day.skipFirstRun();
    day.passUntil(at("2026-03-10T08:58:00Z"));
    day.start();
    day.askForAgenda(day.bus().connection());
    EXPECT_EQ(day.seen().tray, "Standup · 2m");
    day.forgetRecords();
    const int agendasBefore = day.agendasMade();

    int latest = 0;
    for (int turn = 0; turn < turns; ++turn) {
        for (int i = 0; i < notificationsInATurn; ++i) {
            store->storeEvents.resize(1);
            plan("Change " + std::to_string(++latest), "2026-03-10T10:00:00Z");
            Q_EMIT store->changed();
        }
        day.passUntil(day.now() + std::chrono::seconds(2));
    }
    EXPECT_EQ(day.seen(),
              (Seen{"Standup · now !",
                    {"09:00 Standup · now · Zoom", "(10:00 Change " + std::to_string(latest) + ")"},
                    "Standup, Starting now, Zoom",
                    {}}));
    EXPECT_THAT(day.panelHistory(), ElementsAre("08:59:00 Standup"));
    // One for the notifications of a turn, and one for the clock.
    EXPECT_LE(day.agendasMade() - agendasBefore, 2 * turns);
    // Two minutes of the countdown, each as title and label, and the icon that turns orange.
    EXPECT_THAT(day.traySignals(), SizeIs(testing::Le(5)));
}

TEST_F(WholeDayTest, bearsADayWithThousandsOfMeetings)
{
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
    EXPECT_EQ(day.panelText(), "Meeting 0000, Starts in 1m, Zoom");
    day.passUntil(at("2026-03-10T11:00:00Z"));
    EXPECT_EQ(day.panelText(), "Meeting 0060, Starts in 1m, Zoom");
    day.pressInPanel("Dismiss");
    EXPECT_EQ(day.panelText(), "Meeting 0059, Starting now, Zoom");
    day.chooseInMenu("12:23 Meeting 4999");
    EXPECT_TRUE(waitFor([&] { return day.allOpened() == Texts{zoom}; }));
}

} // namespace mivora
