#include "App/ApplicationService.h"
#include "App/CalendarStores.h"
#include "App/RunningInstance.h"
#include "App/commands/CommandLine.h"
#include "Calendar/CalendarFolder.h"
#include "FakeSurroundings.h"
#include "KeloMenuBar/FakeHost.h"
#include "MeetingTexts/LocalDay.h"
#include "Platform/linux/JsonDefaultsStore.h"
#include "Preferences/Settings.h"

#include <QDBusPendingCall>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>
#include <malloc.h>

// A user's day, and the two days after it: at each time, what there is to see.
namespace mivora {

namespace {

using testing::Contains;
using testing::ElementsAre;

/// What a user has before them, and the links that were opened for them since the last look:
/// - the text in the tray, "!" after it where it is orange, "?" where access to calendars is missing;
/// - the menu above its commands, labels in parentheses, "-" for a line between;
/// - the panel, "Standup, Starts in 1m, Zoom";
/// - the links.
using Seen = std::array<std::string, 4>;

std::string menu(const std::vector<std::string> &entries)
{
    std::string text;
    for (const std::string &entry : entries)
        text += (text.empty() ? "" : " | ") + entry;
    return text;
}

/// "09:00 Standup · Zoom": without the blanks that part columns.
std::string plain(const QString &text)
{
    return text.simplified().toStdString();
}

void setLocalZone(const QByteArray &name)
{
    qputenv("TZ", name);
    tzset();
}

/// The application with settings in a file, calendars in a folder, and its item in a tray. Time passes when
/// the test says so.
class WholeDay : FakeSurroundings
{
public:
    /// The application starts at the first start(); the walkthrough has been gone through, and calendars may
    /// be read. Local time is `zone`'s.
    explicit WholeDay(const char *zone)
    {
        // The presentation that gives the tray the title as a text.
        qputenv("MIVORA_TRAY", "label");
        setLocalZone(zone);
        JsonDefaultsStore(m_settings).setValue(settingsKey::hasCompletedOnboarding, true);
        m_access.allow();
    }

    void start()
    {
        const auto before = m_tray.registered.size();
        m_service.reset();
        m_delegate.reset();
        m_defaults = std::make_unique<JsonDefaultsStore>(m_settings);
        m_delegate = std::make_unique<AppDelegate>(parts(
            *m_defaults,
            makeCalendarStore({.folders = {calendars.path()}, .now = clock.now(), .zone = userTimeZone()},
                              *m_defaults, m_access),
            m_connection));
        m_service = std::make_unique<ApplicationService>(m_connection, *m_delegate, StartedBy::user);
        m_delegate->launch();
        claimApplicationName(m_connection);
        ASSERT_TRUE(waitFor([&] { return m_tray.registered.size() > before; })) << "no item came to the tray";
    }

    /// The application is running and awake until `time`, and looks at the clock as often as it does.
    void passUntil(Timestamp time)
    {
        if (!m_delegate)
            clock.time = time;
        while (clock.time < time) {
            clock.time = std::min(clock.time + Seconds(AppDelegate::tickMilliseconds / 1000), time);
            m_delegate->scheduler().refresh();
            QCoreApplication::processEvents();
        }
    }

    void sleepUntil(Timestamp time)
    {
        clock.time = time;
        Q_EMIT systemEvents.didWake();
    }

    void travelTo(const char *zone)
    {
        setLocalZone(zone);
        Q_EMIT systemEvents.timeZoneChanged();
    }

    /// The buttons of the panel.
    void press(void (JoinPanelModel::*button)() const) { (m_delegate->panel().model().*button)(); }

    /// Chooses the menu's entry that begins with `text`; a failure when there is none.
    void chooseInMenu(const char *text)
    {
        for (const auto &item : m_tray.open().children) {
            if (textOf(item).starts_with(text))
                return m_tray.click(item.id);
        }
        ADD_FAILURE() << "the menu has no entry " << text;
    }

    void setShortcut() { m_delegate->prefs().setJoinHotKey(kelo::HotKeyCombo::defaultCombo); }

    void pressShortcut() { hotKeys.press(kelo::HotKeyCombo::defaultCombo); }

    /// Somebody on the bus asks for the agenda.
    void askForAgenda() { call(agendaInterface, "Agenda", {}); }

    /// `mivora join` and its like.
    void command(const char *action)
    {
        call(applicationInterface, "ActivateAction", {QLatin1String(action), QVariantList(), QVariantMap()});
    }

    /// What was opened until now is not among what is seen from now on.
    void forgetOpened() { workspace.opened.clear(); }

    Seen seen()
    {
        std::string tray = plain(m_tray.property("XAyatanaLabel").toString());
        const QString icon = m_tray.property("IconName").toString();
        tray += icon.contains(QLatin1String("-urgent")) ? " !" : "";
        tray += icon.contains(QLatin1String("-exclamation")) ? "?" : "";
        std::vector<std::string> meetings = menuTexts();
        meetings.erase(std::ranges::find_if(meetings,
                                            [](const std::string &text) {
                                                return text.starts_with("Join Next") || text == "Settings…";
                                            }),
                       meetings.end());
        if (!meetings.empty() && meetings.back() == "-")
            meetings.pop_back();
        return {tray, menu(meetings), panelText(), workspace.opened.join(u' ').toStdString()};
    }

    std::vector<std::string> menuTexts()
    {
        std::vector<std::string> texts;
        for (const kelo::DBusMenuLayout &item : m_tray.open().children)
            texts.push_back(textOf(item));
        return texts;
    }

    CalendarFolder calendars;
    support::PrivateBus bus;

private:
    static std::string textOf(const kelo::DBusMenuLayout &item)
    {
        const auto property = [&](const char *name) { return item.properties.value(QLatin1String(name)); };
        if (property("type").toString() == QLatin1String("separator"))
            return "-";
        const QString label = property("label").toString();
        const bool isEnabled = property("enabled").isNull() || property("enabled").toBool();
        return plain(isEnabled ? label : QStringLiteral("(%1)").arg(label));
    }

    std::string panelText() const
    {
        if (!m_delegate->panel().isVisible())
            return {};
        const JoinPanelModel &panel = m_delegate->panel().model();
        return plain(panel.title() + QStringLiteral(", ") + panel.timeText() +
                     (panel.hasLink() ? QStringLiteral(", ") + panel.serviceName() : QString()));
    }

    void call(const char *interface, const char *method, const QVariantList &arguments)
    {
        auto message = QDBusMessage::createMethodCall(QLatin1String(applicationBusName),
                                                      QLatin1String(applicationObjectPath),
                                                      QLatin1String(interface), QLatin1String(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = bus.connection().asyncCall(message);
        ASSERT_TRUE(waitFor([&] { return pending.isFinished(); })) << method;
        EXPECT_FALSE(pending.isError()) << qPrintable(pending.error().message());
    }

    QTemporaryDir m_home;
    const QString m_settings = m_home.filePath(QStringLiteral("config/mivora.json"));
    AccessMemory m_access{m_home.filePath(QStringLiteral("state/access"))};
    QDBusConnection m_connection = bus.connection();
    FakeHost m_tray{bus};
    std::unique_ptr<JsonDefaultsStore> m_defaults;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<ApplicationService> m_service;
};

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
const std::string wholeDay = menu({standup, review, sync, lunch, oneToOne, retro});

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
            if (step.shown[1].empty())
                seen[1].clear();
            return seen == step.shown;
        };
        // Files are read and buttons are pressed in the event loop's own time.
        waitFor(isRight, std::chrono::seconds(5));
        EXPECT_EQ(seen, step.shown);
    }
}

std::vector<Step> morning(WholeDay &day)
{
    const std::string duringStandup = menu({standupNow, review, sync, lunch, oneToOne, retro});
    const std::string duringAll = menu({standupNow, reviewNow, syncNow, lunch, oneToOne, retro});
    const auto press = [&](auto button) { return [&day, button] { day.press(button); }; };
    return {
        {"28T08:00", "the start", {"Standup · 1h", wholeDay}, [&] { day.start(); }},
        {"28T08:59", "the panel comes", {"Standup · 1m !", wholeDay, "Standup, Starts in 1m, Zoom"}},
        {"28T08:59:20", "snoozed", {"Standup · now !", wholeDay}, press(&JoinPanelModel::snooze)},
        {"28T09:00:20", "no more snoozed", {"Standup · now !", duringStandup, "Standup, Starting now, Zoom"}},
        {"28T09:02:30", "joined", {"Standup · now !", duringStandup, "", zoom}, press(&JoinPanelModel::join)},
        {"28T09:29",
         "the next one comes while the first still runs",
         {"Standup · now !", duringStandup, "Design review, Starts in 1m, Google Meet"}},
        {"28T09:31",
         "joined by the menu",
         {"Standup · now !", duringAll, "Sync, Started 1m ago, Zoom", meet},
         [&] { day.chooseInMenu("09:30 Design review"); }},
        {"28T09:31:30",
         "dismissed by command",
         {"Standup · now !", duringAll},
         [&] { day.command("dismiss"); }},
        {"28T10:30", "all three are over", {"Lunch · 1h 30m", menu({lunch, oneToOne, retro})}},
    };
}

std::vector<Step> afternoon(WholeDay &day)
{
    const std::string moved = menu({oneToOneMoved, retro});
    const auto move = [&] {
        day.calendars.write("work/one.ics", eventText("One-to-one", "20260328T140000Z", linked(teams)));
    };
    const auto cancel = [&] {
        const std::string cancelled = linked(retroLink) + "STATUS:CANCELLED\r\n";
        day.calendars.write("work/.retro.tmp", eventText("Retro", "20260328T150000Z", cancelled));
        day.calendars.rename("work/.retro.tmp", "work/retro.ics");
    };
    const auto pressShortcut = [&] { day.pressShortcut(); };
    return {
        {"28T12:00", "without a link", {"Lunch · now !", menu({"(12:00 Lunch · now)", oneToOne, retro})}},
        {"28T13:00",
         "a shortcut is chosen",
         {"One-to-one · 1h", menu({oneToOne, retro})},
         [&] { day.setShortcut(); }},
        {"28T13:58", "moved by an hour", {"One-to-one · 1h 2m", moved}, move},
        {"28T14:59:30", "joined by the shortcut", {"One-to-one · now !", moved, "", teams}, pressShortcut},
        {"28T15:59",
         "the panel for the last one",
         {"One-to-one · now !", menu({oneToOneNow, retro}), "Retro, Starts in 1m, Zoom"}},
        {"28T15:59:10", "which is cancelled", {"One-to-one · now !", oneToOneNow}, cancel},
        {"28T17:59:30", "not evening yet", {"", nothing}, pressShortcut},
    };
}

std::vector<Step> nightAndNextDay(WholeDay &day)
{
    const std::string lookAhead = menu({nothing, "-", "(Tomorrow)", brunch, walk});
    const std::string brunchThere = menu({"09:00 Brunch · now · Zoom", walk});
    const auto moveAndSleep = [&] {
        day.calendars.write("work/kickoff.ics", eventText("Kickoff", "20260330T073000Z", linked(zoom)));
        day.sleepUntil(local("30T08:00"));
    };
    return {
        {"28T18:00", "evening", {"", lookAhead}},
        {"28T23:59:59", "the last second of the day", {"", lookAhead}},
        {"28T23:59:59",
         "midnight",
         {"Brunch · 9h", menu({brunch, walk})},
         [&] { day.sleepUntil(local("29T00:00")); }},
        {"29T00:10",
         "asleep until shortly before it",
         {"Brunch · now !", menu({brunch, walk}), "Brunch, Starting now, Zoom"},
         [&] { day.sleepUntil(local("29T09:59:40")); }},
        {"29T10:05",
         "dismissed",
         {"Brunch · now !", menu({brunchNow, walk})},
         [&] { day.press(&JoinPanelModel::dismiss); }},
        {"29T10:10",
         "an hour to the west",
         {"Brunch · now !", brunchThere},
         [&] { day.travelTo("Europe/London"); }},
        {"29T09:15",
         "started anew, which forgets that it was dismissed",
         {"Brunch · now !", brunchThere, "Brunch, Started 15m ago, Zoom"},
         [&] { day.start(); }},
        {"29T09:16",
         "joined by the shortcut, which is remembered",
         {"Brunch · now !", brunchThere, "", brunchLink},
         [&] { day.pressShortcut(); }},
        {"29T10:00", "the walk is at the new half past twelve", {"Walk · 2h 30m", walk}},
        {"29T22:00", "evening, elsewhere", {"", menu({nothing, "-", "(Tomorrow)", "09:00 Kickoff · Zoom"})}},
        {"29T22:30",
         "asleep over midnight, while a meeting is moved",
         {"Kickoff · 30m", "08:30 Kickoff · Zoom"},
         moveAndSleep},
    };
}

/// From a Saturday to the Monday after it.
void liveTheStory()
{
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars);
    live(day, morning(day));
    live(day, afternoon(day));
    live(day, nightAndNextDay(day));
    EXPECT_THAT(day.menuTexts(), Contains("Join Next Meeting ⇧⌘V"));
}

// Of the address sanitizer's interface, which counts for itself; not there without it.
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

/// What this process holds: bytes, open files, threads.
std::array<std::size_t, 3> holdings()
{
    const auto entries = [](const char *folder) {
        return std::size_t(std::distance(std::filesystem::directory_iterator(folder), {}));
    };
    const auto info = mallinfo2();
    return {__sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes()
                                                    : info.uordblks + info.hblkhd,
            entries("/proc/self/fd"), entries("/proc/self/task")};
}

} // namespace

TEST(WholeDayTest, showsAndOpensWhatIsRightAndLeavesNothingBehind)
{
    constexpr std::size_t growthAllowed = 256 * 1024;
    liveTheStory();
    // What is made once for the whole process is there by now.
    liveTheStory();
    const auto before = holdings();
    for (int round = 0; round < 2 && !HasFailure(); ++round)
        liveTheStory();
    const auto after = holdings();
    EXPECT_LE(after[0], before[0] + growthAllowed);
    EXPECT_LE(after[1], before[1]);
    EXPECT_LE(after[2], before[2]);
}

TEST(WholeDayTest, tellsOfItsAgendaOnceSomebodyHasAsked)
{
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars);
    // Not before the calendars have been read: what is found in them later is news as well.
    live(day, {morning(day).front()});
    RunningInstance follower(day.bus.connection());
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
