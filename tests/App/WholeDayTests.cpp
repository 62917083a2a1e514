#include "App/ApplicationService.h"
#include "App/CalendarSession.h"
#include "App/RunningInstance.h"
#include "App/commands/CommandLine.h"
#include "Calendar/CalendarFolder.h"
#include "Calendar/FakeLoader.h"
#include "FakeSurroundings.h"
#include "KeloMenuBar/FakeHost.h"
#include "Platform/TimeZone.h"
#include "Platform/linux/JsonDefaultsStore.h"
#include "Preferences/Settings.h"
#include "support/FakeNotifications.h"

#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QWindow>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>

// A user's day, and the two days after it: at each time, what there is to see.
namespace mivora {

namespace {

/// What a user has before them, and the links that were opened for them since the last look:
/// - the text in the tray, "!" after it where it is orange, "?" where access to calendars is missing;
/// - the menu above its commands, labels in parentheses, "-" for a line between;
/// - the panel, "Standup, Starts in 1m, Zoom";
/// - the links.
using Seen = std::array<std::string, 4>;

/// "09:00 Standup · Zoom": without the blanks that part columns.
std::string plain(const QString &text)
{
    return text.simplified().toStdString();
}

/// The application with settings in a file, calendars in a folder, and its item in a tray. Time passes when
/// the test says so.
class WholeDay : public FakeSurroundings
{
public:
    /// The application starts at the first start(); the walkthrough has been gone through, and calendars may
    /// be read. Local time is `zone`'s.
    explicit WholeDay(const char *zone)
    {
        // The presentation that gives the tray the title as a text.
        qputenv("MIVORA_TRAY", "label");
        qputenv("TZ", zone);
        tzset();
        JsonDefaultsStore(m_settings).setValue(settingsKey::hasCompletedOnboarding, true);
        m_access.allow();
    }

    /// Starts it, or starts it anew; without a `loader`, with calendars in the folder.
    void start(std::unique_ptr<CalendarLoader> loader = {})
    {
        const auto before = m_tray.registered.size();
        m_service.reset();
        m_delegate.reset();
        m_defaults = std::make_unique<JsonDefaultsStore>(m_settings);
        auto source =
            makeCalendarSource({.folders = {calendars.path()}, .now = clock.now(), .zone = userTimeZone()},
                               *m_defaults, m_access);
        if (loader) {
            EventKitSource::Loaders loaders;
            loaders.push_back(std::move(loader));
            source = std::make_unique<EventKitSource>(m_access, windowAround(clock.now(), userTimeZone()),
                                                      std::move(loaders));
        }
        m_delegate = std::make_unique<AppDelegate>(parts(*m_defaults, std::move(source), m_connection));
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

    AppDelegate &app() { return *m_delegate; }

    /// Chooses the menu's entry that begins with `text`; a failure when there is none.
    void chooseInMenu(const char *text)
    {
        for (const kelo::DBusMenuLayout &item : openMenu()) {
            if (textOf(item).startsWith(QLatin1String(text))) {
                const auto nothing = QVariant::fromValue(QDBusVariant(QString()));
                m_tray.menu("Event", {item.id, QStringLiteral("clicked"), nothing, 0U});
                return;
            }
        }
        ADD_FAILURE() << "the menu has no entry " << text;
    }

    /// Somebody on the bus calls the application.
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

    Seen seen()
    {
        const QString icon = m_tray.property("IconName").toString();
        const QString mark = QLatin1String(icon.contains(u"-urgent")        ? " !"
                                           : icon.contains(u"-exclamation") ? "?"
                                                                            : "");
        QStringList menu;
        for (const kelo::DBusMenuLayout &item : openMenu()) {
            const QString text = textOf(item);
            if (text.startsWith(u"Join Next") || text.startsWith(u"Settings"))
                break;
            menu.append(text);
        }
        if (menu.endsWith(QLatin1String("-")))
            menu.removeLast();
        return {plain(m_tray.property("XAyatanaLabel").toString() + mark), plain(menu.join(u" | ")),
                plain(panelText()), plain(workspace.opened.join(u' '))};
    }

    CalendarFolder calendars;
    support::PrivateBus bus;
    std::optional<kelo::FakeNotifications> desktop;

private:
    /// Opens the menu as panels do.
    QList<kelo::DBusMenuLayout> openMenu()
    {
        m_tray.menu("AboutToShow", {0});
        const QDBusMessage reply = m_tray.menu("GetLayout", {0, -1, QStringList()});
        return qdbus_cast<kelo::DBusMenuLayout>(reply.arguments().value(1)).children;
    }

    static QString textOf(const kelo::DBusMenuLayout &item)
    {
        const auto property = [&](const char *name) { return item.properties.value(QLatin1String(name)); };
        if (property("type").toString() == QLatin1String("separator"))
            return QStringLiteral("-");
        const QString label = property("label").toString().simplified();
        return property("enabled").isNull() || property("enabled").toBool() ? label
                                                                            : QString(u'(' + label + u')');
    }

    QString panelText() const
    {
        const JoinPanelModel &panel = m_delegate->panel().model();
        if (!m_delegate->panel().isVisible())
            return {};
        const QString text = panel.title() + u", " + panel.timeText();
        return panel.hasLink() ? QString(text + u", " + panel.serviceName()) : text;
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
    /// A day of March 2026, the user's local time, and what it is about.
    const char *name;
    /// Without a menu, the menu isn't looked at.
    Seen shown;
    /// What the user or the world does at that time.
    std::function<void()> happens{};
};

const std::string zoom = "https://zoom.us/j/111111111";
const std::string meet = "https://meet.google.com/abc-defg-hij";
const std::string teams = "https://teams.microsoft.com/l/meetup-join/19%3ameeting_x%40thread.v2/0";
const std::string otherZoom = "https://zoom.us/j/222222222";

/// The time that `text` begins with.
Timestamp local(const char *text)
{
    const QString time = QString::fromUtf8(text).section(QLatin1Char(' '), 0, 0);
    const auto named = QDateTime::fromString(QLatin1String("2026-03-") + time, Qt::ISODate);
    return timestampFromSeconds(
        double(QDateTime(named.date(), named.time(), userTimeZone()).toSecsSinceEpoch()));
}

// In the night after this Saturday, clocks in Europe are put forward: the Sunday has 23 hours.
void write(const CalendarFolder &calendars, const char *title, const char *start,
           const std::string &link = {}, const std::string &more = {})
{
    const std::string url = link.empty() ? "" : "URL:" + link + "\r\n";
    const std::string name = std::string("work/") + title;
    calendars.write(name + ".tmp", eventText(title, std::string("202603") + start, url + more));
    calendars.rename(name + ".tmp", name + ".ics");
}

void fillCalendars(const CalendarFolder &calendars)
{
    write(calendars, "Standup", "28T080000Z", zoom);
    write(calendars, "Design review", "28T083000Z", meet);
    write(calendars, "Sync", "28T083000Z", otherZoom);
    write(calendars, "Lunch", "28T110000Z");
    write(calendars, "One-to-one", "28T130000Z", teams);
    write(calendars, "Retro", "28T150000Z", otherZoom);
    write(calendars, "Brunch", "29T080000Z", otherZoom);
    write(calendars, "Walk", "29T123000"); // half past twelve wherever one is
    write(calendars, "Kickoff", "30T080000Z", zoom);
}

const char *const toldToScripts =
    "Due Standup,Started Standup,Joined Standup,Due Design review,Due Sync,Started Design review,"
    "Started Sync,Joined Design review,Ended Standup,Ended Design review,Ended Sync,Started Lunch,"
    "Ended Lunch,Due One-to-one,Joined One-to-one,Started One-to-one,Due Retro,Ended One-to-one,Due Brunch,"
    "Started Brunch,Due Brunch,Started Brunch,Joined Brunch,Ended Brunch,Started Walk,Ended Walk,";

/// Each step's time and event, then what is seen must be what the step says.
void live(WholeDay &day, const std::vector<Step> &steps)
{
    for (const Step &step : steps) {
        SCOPED_TRACE(step.name);
        day.workspace.opened.clear();
        day.passUntil(local(step.name));
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

std::vector<Step> saturday(WholeDay &day)
{
    const std::string late = " | 14:00 One-to-one · Teams | 16:00 Retro · Zoom";
    const std::string afternoon = "(12:00 Lunch)" + late;
    const std::string others = " | 09:30 Design review · Google Meet | 09:30 Sync · Zoom | " + afternoon;
    const std::string wholeDay = "09:00 Standup · Zoom" + others;
    const std::string begun = "09:00 Standup · now · Zoom" + others;
    const std::string allBegun = "09:00 Standup · now · Zoom | 09:30 Design review · now · Google Meet | "
                                 "09:30 Sync · now · Zoom | " +
                                 afternoon;
    const std::string moved = "15:00 One-to-one · Teams | 16:00 Retro · Zoom";
    const auto start = [&] { day.start(); };
    const auto snooze = [&] { day.app().panel().model().snooze(); };
    const auto join = [&] { day.app().panel().model().join(); };
    const auto joinByMenu = [&] { day.chooseInMenu("09:30 Design review"); };
    const auto dismiss = [&] {
        day.call(applicationInterface, "ActivateAction",
                 {QStringLiteral("dismiss"), QVariantList(), QVariantMap()});
    };
    const auto title = [&day](const char *wish) {
        return [&day, wish] { day.app().perform(QStringLiteral("title"), QLatin1String(wish)); };
    };
    const auto obeyDesktop = [&] { day.app().prefs().setHideTitleWhileInhibited(true); };
    const auto inhibit = [&] { day.desktop.emplace(day.bus.connection()).isInhibited = true; };
    const auto noMore = [&] { day.desktop->changeInhibited(false); };
    const auto setShortcut = [&] { day.app().prefs().setJoinHotKey(kelo::HotKeyCombo::defaultCombo); };
    const auto pressShortcut = [&] { day.hotKeys.press(kelo::HotKeyCombo::defaultCombo); };
    const auto remindEarlier = [&] { day.app().prefs().setLeadMinutes(2); };
    const auto move = [&] { write(day.calendars, "One-to-one", "28T140000Z", teams); };
    const auto cancel = [&] {
        write(day.calendars, "Retro", "28T150000Z", otherZoom, "STATUS:CANCELLED\r\n");
    };
    return {
        {"28T08:00 start", {"Standup · 1h", wholeDay}, start},
        {"28T08:30 hidden", {"Zoom · 30m", wholeDay}, title("hide")},
        {"28T08:59 discreet", {"Zoom · 1m !", wholeDay, "Meeting, Starts in 1m, Zoom"}},
        {"28T08:59:05 shown again", {"Standup · now !", wholeDay, "Standup, Starting now, Zoom"}, title("")},
        {"28T08:59:20 snoozed", {"Standup · now !", wholeDay}, snooze},
        {"28T09:00:20 no more snoozed", {"Standup · now !", begun, "Standup, Starting now, Zoom"}},
        {"28T09:02:30 joined", {"Standup · now !", begun, "", zoom}, join},
        {"28T09:29 the next one", {"Standup · now !", begun, "Design review, Starts in 1m, Google Meet"}},
        {"28T09:31 joined by the menu",
         {"Standup · now !", allBegun, "Sync, Started 1m ago, Zoom", meet},
         joinByMenu},
        {"28T09:31:30 dismissed by command", {"Standup · now !", allBegun}, dismiss},
        {"28T10:30 all three are over", {"Lunch · 1h 30m", afternoon}},
        {"28T10:40 nothing says that others see it", {"Lunch · 1h 20m", afternoon}, obeyDesktop},
        {"28T11:00 a server comes that does", {"Meeting · 1h", afternoon}, inhibit},
        {"28T11:30 no more", {"Lunch · 30m", afternoon}, noMore},
        {"28T12:00 no link", {"Lunch · now !", "(12:00 Lunch · now)" + late}},
        {"28T13:00 a shortcut", {"One-to-one · 1h", late.substr(3)}, setShortcut},
        {"28T13:58 moved by an hour", {"One-to-one · 1h 2m", moved}, move},
        {"28T14:59:30 joined by the shortcut", {"One-to-one · now !", moved, "", teams}, pressShortcut},
        {"28T15:58 the last one", {"One-to-one · now !", "", "Retro, Starts in 2m, Zoom"}, remindEarlier},
        {"28T15:59:10 cancelled", {"One-to-one · now !", "15:00 One-to-one · now · Teams"}, cancel},
        {"28T17:59:30 not evening yet", {"", "(No more meetings today)"}, pressShortcut},
    };
}

std::vector<Step> sunday(WholeDay &day)
{
    const std::string evening = "(No more meetings today) | - | (Tomorrow) | ";
    const std::string brunch = "10:00 Brunch · Zoom | (12:30 Walk)";
    const std::string begun = "10:00 Brunch · now · Zoom | (12:30 Walk)";
    const std::string begunThere = "09:00 Brunch · now · Zoom | (12:30 Walk)";
    const auto tellAt = [&day](const char *time, void (SystemEvents::*event)()) {
        return [&day, time, event] {
            day.clock.time = local(time);
            Q_EMIT(day.systemEvents.*event)();
        };
    };
    const auto sleepUntil = [&](const char *time) { return tellAt(time, &SystemEvents::didWake); };
    const auto dismiss = [&] { day.app().panel().model().dismiss(); };
    const auto travel = [&] {
        qputenv("TZ", "Europe/London");
        Q_EMIT day.systemEvents.timeZoneChanged();
    };
    const auto start = [&] { day.start(); };
    const auto pressShortcut = [&] { day.hotKeys.press(kelo::HotKeyCombo::defaultCombo); };
    const auto moveAndSleep = [&day, sleep = sleepUntil("30T08:00")] {
        write(day.calendars, "Kickoff", "30T073000Z", zoom);
        sleep();
    };
    return {
        {"28T18:00 evening", {"", evening + brunch}},
        {"28T23:59:59 midnight", {"Brunch · 9h", brunch}, tellAt("29T00:00", &SystemEvents::dayChanged)},
        {"29T00:10 asleep until shortly before it",
         {"Brunch · now !", brunch, "Brunch, Starting now, Zoom"},
         sleepUntil("29T09:59:40")},
        {"29T10:05 dismissed", {"Brunch · now !", begun}, dismiss},
        {"29T10:10 an hour to the west", {"Brunch · now !", begunThere}, travel},
        {"29T09:15 started anew, which forgets that it was dismissed",
         {"Brunch · now !", begunThere, "Brunch, Started 15m ago, Zoom"},
         start},
        {"29T09:16 joined by the shortcut", {"Brunch · now !", begunThere, "", otherZoom}, pressShortcut},
        {"29T09:17 the clock is put forward, and the walk is at the new half past twelve",
         {"Walk · 2h 30m", "(12:30 Walk)"},
         tellAt("29T10:00", &SystemEvents::clockChanged)},
        {"29T22:00 evening, elsewhere", {"", evening + "09:00 Kickoff · Zoom"}},
        {"29T22:30 asleep over midnight", {"Kickoff · 30m", "08:30 Kickoff · Zoom"}, moveAndSleep},
    };
}

/// From a Saturday to the Monday after it.
void liveTheStory()
{
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars);
    RunningInstance script(day.bus.connection());
    script.follow();
    QString told;
    QObject::connect(&script, &RunningInstance::happened, [&](const QString &event, const QJsonObject &of) {
        told += event.mid(7) + u' ' + of[QLatin1String("title")].toString() + u',';
    });
    live(day, saturday(day));
    live(day, sunday(day));
    EXPECT_TRUE(waitFor([&] { return told == QLatin1String(toldToScripts); })) << qPrintable(told);
}

/// The open files and the threads of this process.
std::array<std::ptrdiff_t, 2> holdings()
{
    const auto entries = [](const char *folder) {
        return std::distance(std::filesystem::directory_iterator(folder), {});
    };
    return {entries("/proc/self/fd"), entries("/proc/self/task")};
}

} // namespace

TEST(WholeDayTest, showsAndOpensWhatIsRightAndLeavesNothingBehind)
{
    liveTheStory();
    // What is made once for the whole process is there by now.
    const auto before = holdings();
    liveTheStory();
    const auto after = holdings();
    EXPECT_LE(after[0], before[0]) << "files";
    EXPECT_LE(after[1], before[1]) << "threads";
}

TEST(WholeDayTest, obeysCommandsByWhatIsKnownOfTheCalendars)
{
    const QString link = QString::fromStdString(zoom);
    auto owned = std::make_unique<FakeLoader>();
    FakeLoader *loader = owned.get();
    StoreUpdate known{.status = AuthorizationStatus::fullAccess, .isLoaded = false};
    const auto add = [&](const char *title, const char *start) {
        EventSnapshot event = makeSnapshot(title, at(start));
        event.url = zoom;
        known.meetings.push_back(std::make_shared<const Meeting>(Meeting::fromSnapshot(event)));
        loader->tell(known);
    };
    WholeDay day("UTC");
    day.clock.time = at("2026-03-10T08:50:00Z");
    day.start(std::move(owned));
    add("Design review", "2026-03-10T09:00:00Z");
    QObject caller;
    QStringList answers;
    const auto send = [&](const char *action, QObject &from) {
        day.app().perform({QLatin1String(action), {}, &from, [&answers, action](const CommandResult &result) {
                               answers.append(QLatin1String(action) + (result.isDone() ? u"" : u" failed"));
                           }});
    };
    send("join", caller);
    EXPECT_EQ(day.workspace.opened, QStringList{link});
    day.call(applicationInterface, "ActivateAction",
             {QStringLiteral("join"), QVariantList(), Activation{.token = "token"}.platformData()});
    EXPECT_EQ(day.workspace.token, "token");
    send("nonsense", caller);
    send("dismiss", caller);
    auto impatient = std::make_unique<QObject>();
    send("snooze", *impatient);
    impatient.reset();
    EXPECT_EQ(answers.join(u','), QStringLiteral("join,nonsense failed"));

    day.clock.time = at("2026-03-10T08:59:30Z");
    add("Planning", "2026-03-10T09:00:30Z");
    EXPECT_TRUE(waitFor([&] { return answers.size() == 3; }));
    EXPECT_FALSE(day.app().panel().isVisible());
    known.isLoaded = true;
    loader->tell(known);
    send("snooze", caller);
    send("copy", caller);
    EXPECT_EQ(answers.join(u','), QStringLiteral("join,nonsense failed,dismiss,snooze failed,copy"));
    EXPECT_EQ(day.pasteboard.texts, QStringList{link});
}

TEST(WholeDayTest, hasOneWindowForTheSettingsAndBeginsWithTheWalkthrough)
{
    const auto windows = [] {
        QStringList titles;
        for (const QWindow *window : QGuiApplication::topLevelWindows()) {
            if (window->isVisible())
                titles.append(window->title());
        }
        return titles;
    };
    WholeDay day("UTC");
    const auto isDone = [&](const char *page) {
        return day.app().perform(QStringLiteral("settings"), QLatin1String(page)).isDone();
    };
    day.start();
    EXPECT_EQ(windows(), QStringList());
    EXPECT_FALSE(isDone("other"));
    EXPECT_TRUE(isDone("calendars") && isDone(""));
    day.app().reopen();
    EXPECT_EQ(windows(), QStringList{QStringLiteral("Calendars")});
    EXPECT_TRUE(isDone("general"));
    EXPECT_EQ(windows(), QStringList{QStringLiteral("General")});
    day.app().prefs().setHasCompletedOnboarding(false);
    day.start();
    EXPECT_EQ(windows(), QStringList{QStringLiteral("Welcome to Mivora")});
}

TEST(WholeDayTest, tellsOfItsAgendaOnceSomebodyHasAsked)
{
    WholeDay day("Europe/Berlin");
    fillCalendars(day.calendars);
    // Not before the calendars have been read: what is found in them later is news as well.
    live(day, {saturday(day).front()});
    RunningInstance follower(day.bus.connection());
    EXPECT_TRUE(follower.isThere());
    follower.follow();
    std::vector<std::string> titles;
    QObject::connect(&follower, &RunningInstance::agendaChanged, [&](const QJsonObject &agenda) {
        titles.push_back(
            agenda[QLatin1String("statusItem")][QLatin1String("title")].toString().toStdString());
    });
    day.passUntil(local("28T08:30"));
    day.call(agendaInterface, "Agenda", {});
    day.passUntil(local("28T08:32:30"));
    EXPECT_TRUE(waitFor([&] { return titles.size() == 2; }));
    EXPECT_THAT(titles, testing::ElementsAre(" Standup · 29m", " Standup · 28m"));
    day.app().prefs().setIgnoredTitles({QStringLiteral("stand?p")});
    EXPECT_TRUE(waitFor([&] { return titles.size() == 3; })) << "at once";
    day.call(agendaInterface, "AgendaOfAll", {});
}

} // namespace mivora
