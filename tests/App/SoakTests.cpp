#include "../Calendar/ScriptedCalendars.h"
#include "Calendar/CombinedStore.h"
#include "Calendar/desktop/DesktopStore.h"
#include "Calendar/folder/FolderStore.h"
#include "ExpectedPanel.h"
#include "WholeDay.h"
#include "support/ProcessFigures.h"

#include <QGuiApplication>
#include <QWindow>
#include <gmock/gmock.h>

// Days and days with the whole application, in which everything changes that can: what it shows must be right
// at each of its looks at the clock, and what it holds must not grow. A few days by default; docs/testing.md
// tells how to run a month.
namespace mivora {

namespace {

using support::ProcessFigures;

constexpr int ticksInADay = 24 * 60 * 60 * 1000 / AppDelegate::tickMilliseconds;
/// The first days fill caches: they are not compared.
constexpr int warmUpDays = 2;
/// What the last day may hold more than the first one; the calendars are not the same.
constexpr std::size_t growthAllowed = 256 * 1024;

int numberFrom(const char *variable, int otherwise)
{
    const int number = qEnvironmentVariableIntValue(variable);
    return number > 0 ? number : otherwise;
}

/// Counts how often the panel's window comes up.
class ShowCounter final : public QObject
{
public:
    explicit ShowCounter(WholeDay &day) : m_day(day) { qApp->installEventFilter(this); }

    int shown = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show &&
            watched == m_day.application().panel().controller().panel().window())
            ++shown;
        return false;
    }

private:
    WholeDay &m_day;
};

class Soak
{
public:
    Soak();

    /// As many refreshes as a day has; the day is longer by the time that the machine sleeps.
    void liveADay(int number);

    std::vector<ProcessFigures> figures;

private:
    struct Happening
    {
        const char *name;
        /// On every so manieth day so many times.
        int everyDays;
        int times;
        void (Soak::*happen)();
    };

    static const std::vector<Happening> happenings;

    int from(int first, int last) { return std::uniform_int_distribution(first, last)(m_chance); }

    std::multimap<int, const Happening *> schedule(int day);
    void start();
    void planAhead();
    void publish(const PlannedMeeting &meeting);
    void withdraw(const PlannedMeeting &meeting);
    void tellDesktopAll();
    void tellDesktop(DesktopScript::Step step);
    PlannedMeeting *anyAhead();
    std::string pathOf(const PlannedMeeting &meeting) const;

    void check(const char *what);
    bool showsAgenda();
    void decide();

    void moveMeeting();
    void cancelMeeting();
    void addMeeting();
    void renameFile();
    void rewriteFile();
    void restartDesktop();

    void restartTray() { m_day.restartTray(); }

    void openMenu();
    void changeSettings();
    void openSettings();
    void followAgenda();
    void nap();
    void sleepOverTheWeekend();

    void setClockBack() { m_day.setClock(m_day.now() - std::chrono::hours(1)); }

    void setClockForward() { m_day.setClock(m_day.now() + std::chrono::minutes(from(1, 90))); }

    void travel();
    void restart();

    std::mt19937 m_chance{std::mt19937::result_type(numberFrom("MIVORA_SOAK_SEED", 1))};
    CalendarFolder m_services;
    std::unique_ptr<support::PrivateBus> m_desktopBus;
    QDBusConnection m_desktopConnection{QString()};
    std::shared_ptr<DesktopScript> m_desktop;
    WholeDay m_day{"Europe/Berlin"};
    ShowCounter m_shown{m_day};
    PlannedMeetings m_planned;
    ExpectedPanel m_expected;
    PlannedMeeting m_picked;
    std::set<std::string> m_renamed;
    Timestamp m_plannedUntil = at("2026-03-26T00:00:00Z");
};

const std::vector<Soak::Happening> Soak::happenings{
    {"a meeting is moved", 1, 4, &Soak::moveMeeting},
    {"a meeting is cancelled", 1, 2, &Soak::cancelMeeting},
    {"a meeting is added", 1, 4, &Soak::addMeeting},
    {"a file is renamed", 1, 1, &Soak::renameFile},
    {"a file is written anew", 1, 2, &Soak::rewriteFile},
    {"the calendar server starts again", 1, 2, &Soak::restartDesktop},
    {"the tray starts again", 1, 2, &Soak::restartTray},
    {"the menu is opened", 1, 6, &Soak::openMenu},
    {"a setting is changed", 1, 3, &Soak::changeSettings},
    {"somebody asks for the agenda", 1, 1, &Soak::followAgenda},
    {"the machine sleeps", 1, 2, &Soak::nap},
    {"the clock is set back", 2, 1, &Soak::setClockBack},
    {"the clock is set forward", 2, 1, &Soak::setClockForward},
    {"the user travels", 2, 1, &Soak::travel},
    {"the program is started again", 3, 1, &Soak::restart},
    {"the machine sleeps for days", 5, 1, &Soak::sleepOverTheWeekend},
};

Soak::Soak()
    : m_planned({"work", "home", "desktop"}, {.first = {.uid = "Standup",
                                                        .start = at("2026-03-02T09:30:00+01:00"),
                                                        .end = at("2026-03-02T09:45:00+01:00"),
                                                        .hasLink = true,
                                                        .calendar = "work"},
                                              .zone = "Europe/Berlin"})
{
    m_services.write("sources.service", "[D-BUS Service]\nName=org.gnome.evolution.dataserver.Sources5\n"
                                        "Exec=/bin/false\n");
    m_desktopBus = std::make_unique<support::PrivateBus>(QString::fromStdString(m_services.path()));
    m_desktopConnection = m_desktopBus->connection();
    m_day.setStoreFactory([this](AccessMemory &access) {
        const EventWindow window = windowAround(m_day.now(), QTimeZone::systemTimeZone());
        m_desktop = std::make_shared<DesktopScript>();
        std::vector<CombinedStore::Part> parts;
        parts.push_back({"folders", std::make_unique<FolderStore>(FolderStore::Setup{
                                        {{m_day.calendars().path()}}, window, {"me@example.com"}})});
        parts.push_back({"desktop", std::make_unique<DesktopStore>(DesktopStore::Setup{
                                        .bus = m_desktopConnection,
                                        .window = window,
                                        .addresses = {"me@example.com"},
                                        .factory = [script = m_desktop] {
                                            return std::make_unique<ScriptedCalendars>(script);
                                        }})});
        return std::make_unique<CombinedStore>(std::move(parts), access);
    });
    m_day.skipFirstRun();
    m_day.passUntil(m_plannedUntil);
    m_day.calendars().write("work/standup.ics", m_planned.daily().fileText());
    m_day.calendars().makeFolder("home");
    start();
    m_day.setShortcut();
    planAhead();
    check("the start");
}

void Soak::start()
{
    m_day.start();
    tellDesktopAll();
}

void Soak::liveADay(int number)
{
    planAhead();
    const auto happenings = schedule(number);
    for (int tick = 0; tick < ticksInADay && !testing::Test::HasFailure(); ++tick) {
        m_day.passUntil(m_day.now() + std::chrono::milliseconds(AppDelegate::tickMilliseconds));
        check("time passes");
        decide();
        const auto [first, last] = happenings.equal_range(tick);
        for (auto next = first; next != last; ++next) {
            (this->*next->second->happen)();
            check(next->second->name);
        }
    }
    m_day.forgetRecords();
    // Each day ends with the same things having been used since the last start.
    openSettings();
    // As some minutes after the last panel.
    m_day.application().panel().controller().panel().releaseView();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    waitAWhile(std::chrono::milliseconds(50));
    figures.push_back(ProcessFigures::now());
}

std::multimap<int, const Soak::Happening *> Soak::schedule(int day)
{
    std::multimap<int, const Happening *> result;
    for (const Happening &happening : happenings) {
        for (int i = 0; day % happening.everyDays == happening.everyDays / 2 && i < happening.times; ++i)
            result.emplace(from(0, ticksInADay - 1), &happening);
    }
    return result;
}

void Soak::planAhead()
{
    while (m_plannedUntil < m_day.now() + std::chrono::hours(100)) {
        const Timestamp until = m_plannedUntil + std::chrono::hours(24);
        for (int i = 0; i < 14; ++i)
            publish(m_planned.makeUp(m_plannedUntil, until, m_chance));
        m_plannedUntil = until;
    }
    const auto meetings = m_planned.single();
    for (const auto &[uid, meeting] : meetings) {
        if (meeting.end < m_day.now() - std::chrono::hours(48))
            withdraw(meeting);
    }
    check("the next days are planned");
}

std::string Soak::pathOf(const PlannedMeeting &meeting) const
{
    const bool isRenamed = m_renamed.contains(meeting.uid);
    return meeting.calendar + '/' + meeting.uid + (isRenamed ? "-renamed.ics" : ".ics");
}

void Soak::publish(const PlannedMeeting &meeting)
{
    m_planned.put(meeting);
    if (meeting.calendar == "desktop") {
        tellDesktop([meeting](DesktopCalendarsReader &reader) {
            reader.putObjects("desktop", {{{meeting.uid, {}}, eventOf(meeting)}});
        });
    } else if (from(0, 1) == 0) {
        m_day.calendars().write(pathOf(meeting), fileTextOf(meeting));
    } else {
        m_day.calendars().write(meeting.calendar + "/.new", fileTextOf(meeting));
        m_day.calendars().rename(meeting.calendar + "/.new", pathOf(meeting));
    }
}

void Soak::withdraw(const PlannedMeeting &meeting)
{
    m_planned.remove(meeting.uid);
    if (meeting.calendar == "desktop")
        tellDesktop([uid = meeting.uid](auto &reader) { reader.removeObjects("desktop", {{uid, {}}}); });
    else
        m_day.calendars().remove(pathOf(meeting));
    m_renamed.erase(meeting.uid);
}

void Soak::tellDesktop(DesktopScript::Step step)
{
    m_desktop->tell([step = std::move(step)](DesktopCalendarsReader &reader) {
        step(reader);
        reader.settle(true);
    });
}

void Soak::tellDesktopAll()
{
    std::vector<CalendarObject> objects;
    for (const auto &[uid, meeting] : m_planned.single()) {
        if (meeting.calendar == "desktop")
            objects.push_back({{uid, {}}, eventOf(meeting)});
    }
    tellDesktop([objects = std::move(objects)](DesktopCalendarsReader &reader) mutable {
        reader.setAccess(DesktopAccess::granted);
        reader.setAccounts(
            {{{.id = "desktop", .title = "Desktop", .account = {}, .color = {}, .ownerAddresses = {}}}, {}});
        reader.startLoad("desktop");
        reader.putObjects("desktop", std::move(objects));
        reader.finishLoad("desktop");
    });
}

bool Soak::showsAgenda()
{
    const auto &shown = m_day.application().scheduler().todaysMeetings();
    return std::equal(shown.begin(), shown.end(), m_expected.agenda().begin(), m_expected.agenda().end(),
                      [](const Meeting &meeting, const PlannedMeeting &planned) {
                          return meeting.title == planned.uid && meeting.start == planned.start &&
                                 meeting.end == planned.end && meeting.calendarID == planned.calendar;
                      });
}

void Soak::check(const char *what)
{
    m_expected.look(m_planned, m_day.now(), QTimeZone::systemTimeZone());
    QCoreApplication::processEvents();
    // Files are read on another thread.
    waitFor([this] { return showsAgenda(); }, std::chrono::seconds(20));
    const auto when = QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(m_day.now())));
    SCOPED_TRACE(what + (", " + when.toString(Qt::ISODate).toStdString()));
    EXPECT_TRUE(showsAgenda());
    EXPECT_EQ(m_day.panelTitle(), m_expected.title());
    EXPECT_EQ(m_shown.shown, m_expected.showings()) << "the panel's window came up as often as it should";
}

void Soak::decide()
{
    if (m_expected.title().empty() || from(1, 6) != 1)
        return;
    const int choice = from(m_expected.hasLink() ? 0 : 3, 6);
    static const char *const buttons[] = {"Join",  nullptr,        nullptr, "Dismiss",
                                          nullptr, "Snooze 1 min", nullptr};
    static const char *const verbs[] = {nullptr, "join", nullptr, nullptr, "dismiss", nullptr, "snooze"};
    if (buttons[choice])
        m_day.pressInPanel(buttons[choice]);
    else if (verbs[choice])
        EXPECT_FALSE(m_day.application().perform(QLatin1String(verbs[choice]), {}));
    else
        m_day.pressShortcut();
    choice < 5 ? m_expected.settle() : m_expected.snooze(m_day.now());
    check("the user decides");
}

PlannedMeeting *Soak::anyAhead()
{
    std::vector<PlannedMeeting> ahead;
    for (const auto &[uid, meeting] : m_planned.single()) {
        if (meeting.end > m_day.now() && meeting.start < m_day.now() + std::chrono::hours(12))
            ahead.push_back(meeting);
    }
    if (ahead.empty())
        return nullptr;
    m_picked = ahead[std::size_t(from(0, int(ahead.size()) - 1))];
    return &m_picked;
}

void Soak::moveMeeting()
{
    if (PlannedMeeting *meeting = anyAhead()) {
        const auto by = std::chrono::minutes(5 * from(-24, 24));
        meeting->start += by;
        meeting->end += by;
        publish(*meeting);
    }
}

void Soak::cancelMeeting()
{
    if (const PlannedMeeting *meeting = anyAhead())
        withdraw(*meeting);
}

void Soak::addMeeting()
{
    publish(m_planned.makeUp(m_day.now() - std::chrono::minutes(5), m_day.now() + std::chrono::hours(2),
                             m_chance));
}

void Soak::renameFile()
{
    const PlannedMeeting *meeting = anyAhead();
    if (!meeting || meeting->calendar == "desktop" || m_renamed.contains(meeting->uid))
        return;
    const std::string before = pathOf(*meeting);
    m_renamed.insert(meeting->uid);
    m_day.calendars().rename(before, pathOf(*meeting));
}

void Soak::rewriteFile()
{
    if (const PlannedMeeting *meeting = anyAhead())
        publish(*meeting);
}

void Soak::restartDesktop()
{
    tellDesktop([](auto &reader) { reader.setAccess(DesktopAccess::unavailable); });
    tellDesktopAll();
}

void Soak::openMenu()
{
    const std::size_t meetings = m_expected.agenda().size();
    const std::vector<std::string> menu = m_day.seen().menu;
    EXPECT_GE(menu.size(), std::max<std::size_t>(meetings, 1)) << testing::PrintToString(menu);
}

void Soak::changeSettings()
{
    static constexpr int leads[] = {0, 1, 2, 5};
    Preferences &prefs = m_day.application().prefs();
    switch (from(0, 2)) {
    case 0:
        prefs.setLeadMinutes(m_expected.leadMinutes = leads[from(0, 3)]);
        break;
    case 1:
        prefs.setRemindWithoutLink(m_expected.remindsWithoutLink = !m_expected.remindsWithoutLink);
        break;
    default:
        m_expected.hiddenCalendars =
            m_expected.hiddenCalendars.empty() ? std::set<std::string>{"home"} : std::set<std::string>{};
        prefs.setDisabledCalendarIDs(m_expected.hiddenCalendars);
    }
    QCoreApplication::processEvents();
}

void Soak::openSettings()
{
    EXPECT_FALSE(m_day.application().perform(QStringLiteral("settings"), QStringLiteral("calendars")));
    waitAWhile(std::chrono::milliseconds(100));
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->title() == QLatin1String("Calendars"))
            window->close();
    }
}

void Soak::followAgenda()
{
    const QDBusConnection follower = m_day.bus().connection();
    m_day.askForAgenda(follower);
    QDBusConnection::disconnectFromBus(follower.name());
}

void Soak::nap()
{
    m_day.sleepUntil(m_day.now() + std::chrono::seconds(from(30, 8 * 3600)));
}

void Soak::sleepOverTheWeekend()
{
    // Days that are not loaded yet come up in their own time: from no panel to the one that is due it is one
    // showing all the same, while one from before the weekend might stay, or go and come.
    while (!m_expected.title().empty()) {
        m_day.pressInPanel("Dismiss");
        m_expected.settle();
        check("the desk is cleared");
    }
    m_day.sleepUntil(m_day.now() + std::chrono::hours(60));
    check("after the weekend");
    planAhead();
}

void Soak::travel()
{
    static const char *const zones[] = {"Europe/Berlin", "America/New_York", "Asia/Kolkata",
                                        "Pacific/Auckland"};
    m_day.travelTo(zones[from(0, 3)]);
}

void Soak::restart()
{
    m_day.quit();
    m_expected.forgetAll();
    start();
}

} // namespace

TEST(SoakTest, showsWhatIsRightForDaysAndHoldsNoMoreThanAtFirst)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    const int days = numberFrom("MIVORA_SOAK_DAYS", 5);
    Soak soak;
    for (int day = 0; day < days && !HasFailure(); ++day) {
        soak.liveADay(day);
        const ProcessFigures &figures = soak.figures.back();
        std::printf("day %2d: %8zu bytes, %ld descriptors, %ld threads\n", day + 1, figures.bytes,
                    figures.descriptors, figures.threads);
        std::fflush(stdout);
    }
    if (HasFailure() || days <= warmUpDays)
        return;
    const ProcessFigures &first = soak.figures[warmUpDays];
    const ProcessFigures &last = soak.figures.back();
    EXPECT_LE(last.bytes, first.bytes + growthAllowed);
    EXPECT_LE(last.descriptors, first.descriptors);
    EXPECT_LE(last.threads, first.threads);
}

} // namespace mivora
