#include "Calendar/CalendarFolder.h"
#include "Calendar/desktop/DesktopStore.h"
#include "CalendarEds/EdsMaker.h"
#include "CalendarEds/EdsWorld.h"
#include "support/ProcessFigures.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>

namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::EdsMaker;
using support::EdsWorld;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Titles = std::vector<std::string>;

/// A VEVENT of an hour.
std::string event(const std::string &uid, const std::string &start, const std::string &more = {})
{
    std::string text = "BEGIN:VEVENT\r\nUID:";
    text.append(uid).append("\r\nDTSTAMP:20260101T000000Z\r\nDTSTART").append(start);
    text.append("\r\nDURATION:PT1H\r\nSUMMARY:").append(uid).append("\r\n");
    return text.append(more).append("END:VEVENT\r\n");
}

/// The store over the real server, for the days around 10 March 2026 in UTC.
class EdsStoreTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        if (EdsWorld::isInstalled()) {
            world = new EdsWorld;
            world->writeSource(QStringLiteral("acme"),
                               "[Data Source]\nDisplayName=Acme\nEnabled=true\n"
                               "[Collection]\nBackendName=none\nIdentity=Ann@Acme.example\n");
            world->writeSource(QStringLiteral("unknown"), "[Data Source]\nDisplayName=Unknown kind\n"
                                                          "Enabled=true\nParent=local-stub\n"
                                                          "[Calendar]\nBackendName=nonesuch\n");
            world->writeSource(QStringLiteral("acme-calendar"),
                               "[Data Source]\nDisplayName=Ann\nEnabled=true\nParent=acme\n"
                               "[Calendar]\nBackendName=local\n");
        }
    }

    static void TearDownTestSuite()
    {
        delete world;
        world = nullptr;
    }

    void SetUp() override
    {
        if (!world)
            GTEST_SKIP() << "Evolution Data Server is not installed";
        maker = std::make_unique<EdsMaker>();
        calendar = maker->addCalendar("Work");
        openStore();
    }

    void TearDown() override
    {
        store.reset();
        if (maker && !calendar.empty())
            maker->removeCalendar(calendar);
    }

    void openStore()
    {
        const char *now = "2026-03-10T08:00:00Z";
        store = std::make_unique<DesktopStore>(
            DesktopStore::Setup{.bus = world->bus().connection(),
                                .window = windowAround(at(now), QTimeZone::utc()),
                                .addresses = {"me@example.com"}});
        ASSERT_TRUE(waitFor([this] { return store->isLoaded(); }, 40s));
    }

    StoreEvents eventsOf(const std::string &id, const char *day = "2026-03-10T00:00:00Z", int days = 1)
    {
        return store->events(at(day), at(day) + Seconds(days * 86400), std::set{id});
    }

    Titles titles(const char *day = "2026-03-10T00:00:00Z", int days = 1)
    {
        Titles found;
        for (const auto &event : eventsOf(calendar, day, days))
            found.push_back(event->title.value_or("-"));
        std::sort(found.begin(), found.end());
        return found;
    }

    bool waitForTitles(const Titles &wanted)
    {
        return waitFor([&] { return titles() == wanted; }, 40s);
    }

    std::optional<StoreCalendar> calendarNamed(const std::string &id) const
    {
        for (const StoreCalendar &known : store->calendars())
            if (known.id == id)
                return known;
        return std::nullopt;
    }

    template<typename Condition> bool waitForCalendar(Condition condition)
    {
        return waitFor([&] { return condition(calendarNamed(calendar)); }, 20s);
    }

    static EdsWorld *world;
    std::unique_ptr<EdsMaker> maker;
    std::string calendar;
    std::unique_ptr<DesktopStore> store;
};

EdsWorld *EdsStoreTest::world = nullptr;

TEST_F(EdsStoreTest, followsCalendars)
{
    ASSERT_TRUE(calendarNamed(calendar));
    EXPECT_EQ(calendarNamed(calendar)->title, "Work");
    EXPECT_EQ(calendarNamed(calendar)->sourceTitle, "On This Computer");
    EXPECT_EQ(calendarNamed(calendar)->color, Color::fromHex("#3584e4"));
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::fullAccess);

    maker->edit(calendar, "DisplayName", "Office");
    EXPECT_TRUE(waitForCalendar([](const auto &known) { return known && known->title == "Office"; }));
    maker->edit(calendar, "Color", "#ff0000");
    EXPECT_TRUE(waitForCalendar(
        [](const auto &known) { return known && known->color == Color::fromHex("#ff0000"); }));
    maker->edit(calendar, "Color", "rgb(0,128,0)");
    EXPECT_TRUE(waitForCalendar(
        [](const auto &known) { return known && known->color == Color::fromHex("#008000"); }));

    maker->create(calendar, event("seen", ":20260310T090000Z"));
    EXPECT_TRUE(waitForTitles({"seen"}));
    maker->edit(calendar, "Enabled", "false");
    EXPECT_TRUE(waitForCalendar([](const auto &known) { return !known; }));
    EXPECT_THAT(titles(), IsEmpty());
    maker->edit(calendar, "Enabled", "true");
    EXPECT_TRUE(waitForTitles({"seen"}));

    maker->removeCalendar(std::exchange(calendar, {}));
    EXPECT_TRUE(waitForCalendar([](const auto &known) { return !known; }));
}

TEST_F(EdsStoreTest, followsEvents)
{
    maker->create(calendar, event("one", ":20260310T090000Z"));
    maker->create(calendar, event("two", ":20260310T110000Z"));
    EXPECT_TRUE(waitForTitles({"one", "two"}));
    maker->modify(calendar, event("one", ":20260311T090000Z"));
    EXPECT_TRUE(waitForTitles({"two"}));
    maker->modify(calendar, event("one", ":20270311T090000Z"));
    maker->modify(calendar, event("one", ":20260310T120000Z"));
    EXPECT_TRUE(waitForTitles({"one", "two"}));
    maker->modify(calendar, event("two", ":20260310T110000Z", "STATUS:CANCELLED\r\n"));
    EXPECT_TRUE(waitForTitles({"one"}));
    maker->remove(calendar, "one");
    EXPECT_TRUE(waitForTitles({}));
}

TEST_F(EdsStoreTest, tellsEverythingOnItsOwnThread)
{
    // A library's callback that goes astray runs on the main thread, and races with the loader's.
    maker->create(calendar, event("one", ":20260310T090000Z"));
    EXPECT_TRUE(waitForTitles({"one"}));
    std::atomic<std::thread::id> own;
    std::atomic<int> told = 0, astray = 0;
    DesktopLoader loader({.service = EdsWorld::sourcesName,
                          .window = windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()),
                          .addresses = {},
                          .factory =
                              [&] {
                                  own = std::this_thread::get_id();
                                  return makeEdsCalendars();
                              }},
                         [&] { ++(std::this_thread::get_id() == own.load() ? told : astray); });
    bool isLoaded = false;
    const auto hasNews = [&] {
        const auto news = loader.takeNews();
        isLoaded = isLoaded || (!news.empty() && news.back().isLoaded);
        return isLoaded && !news.empty();
    };
    EXPECT_TRUE(waitFor(hasNews, 20s));
    for (const char *uid : {"two", "three"}) {
        maker->create(calendar, event(uid, ":20260310T090000Z"));
        EXPECT_TRUE(waitFor(hasNews, 20s)) << uid;
    }
    EXPECT_GT(told, 0);
    EXPECT_EQ(astray, 0);
}

TEST_F(EdsStoreTest, knowsWhereOccurrencesWentTo)
{
    const std::string series = event("series", ":20260301T090000Z", "RRULE:FREQ=DAILY;COUNT=60\r\n");
    maker->create(calendar, series);
    EXPECT_TRUE(waitForTitles({"series"}));

    // To another day of the window, to a day far outside of it, and back.
    for (const char *start : {":20260312T150000Z", ":20270601T150000Z", ":20260310T200000Z"}) {
        maker->modify(calendar, event("series", start, "RECURRENCE-ID:20260310T090000Z\r\n"),
                      EdsMaker::Which::thisOne);
        const bool isOnTheDay = std::string_view(start).starts_with(":20260310");
        EXPECT_TRUE(waitForTitles(isOnTheDay ? Titles{"series"} : Titles{})) << start;
    }
    ASSERT_EQ(eventsOf(calendar).size(), 1U);
    EXPECT_EQ(eventsOf(calendar).front()->start, at("2026-03-10T20:00:00Z"));

    maker->remove(calendar, "series", "20260311T090000Z", EdsMaker::Which::thisOne);
    EXPECT_TRUE(waitFor([&] { return titles("2026-03-11T00:00:00Z").empty(); }, 20s));
    EXPECT_EQ(titles("2026-03-12T00:00:00Z"), Titles{"series"});

    maker->remove(calendar, "series");
    EXPECT_TRUE(waitFor([&] { return titles("2026-03-09T00:00:00Z", 4).empty(); }, 20s));
}

TEST_F(EdsStoreTest, isNotHeldUpByARuleThatNeverComesTrue)
{
    // The server tells of an import's events in the order of their identifiers, overrides last.
    maker->import(
        calendar,
        "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" +
            event("30 February", ":20260101T090000Z", "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30\r\n") +
            event("after it", ":20260310T090000Z") +
            event("invited once", ":20260310T110000Z", "RECURRENCE-ID:20260312T110000Z\r\n") +
            "BEGIN:VEVENT\r\nUID:no length\r\nSUMMARY:no length\r\n"
            "DTSTART:20260310T120000Z\r\nDTEND:20260310T120000Z\r\nEND:VEVENT\r\n"
            "END:VCALENDAR\r\n");
    const Titles wanted{"after it", "invited once", "no length"};
    EXPECT_TRUE(waitForTitles(wanted)) << testing::PrintToString(titles());
    store.reset();
    openStore();
    EXPECT_TRUE(waitForTitles(wanted)) << testing::PrintToString(titles());
}

TEST_F(EdsStoreTest, findsTimeZonesByNamesThatTheServerWritesAnotherWay)
{
    // The first is escaped where it is defined; both are folded where they are used.
    const char *const names[] = {"(UTC+01:00) Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna",
                                 "(GMT+01.00) Sarajevo / Skopje / Sofija / Vilnius / Warsaw / Zagreb"};
    std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
    for (const std::string name : names) {
        text.append("BEGIN:VTIMEZONE\r\nTZID:").append(name);
        text.append("\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:+0100\r\n"
                    "TZOFFSETTO:+0100\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n");
        text.append(event(name.substr(1, 3), ";TZID=\"" + name + "\":20260310T103000"));
    }
    maker->import(calendar, text.append("END:VCALENDAR\r\n"));
    EXPECT_TRUE(waitForTitles({"GMT", "UTC"}));
    for (const auto &zoned : eventsOf(calendar))
        EXPECT_EQ(zoned->start, at("2026-03-10T09:30:00Z")) << *zoned->title;
}

TEST_F(EdsStoreTest, knowsTheUserByTheAccount)
{
    const std::string own = "acme-calendar";
    maker->create(own, event("review", ":20260310T090000Z",
                             "ATTENDEE:mailto:me@example.com\r\nATTENDEE:mailto:ann@acme.example\r\n"));
    ASSERT_TRUE(waitFor([&] { return eventsOf(own).size() == 1; }, 20s));
    EXPECT_EQ(calendarNamed(own)->sourceTitle, "Acme");
    const auto &attendees = eventsOf(own).front()->attendees;
    ASSERT_EQ(attendees.size(), 2U);
    EXPECT_FALSE(attendees[0].isCurrentUser);
    EXPECT_TRUE(attendees[1].isCurrentUser);
}

TEST_F(EdsStoreTest, loadsOtherDaysWhenAsked)
{
    maker->create(calendar, event("later", ":20260601T090000Z"));
    maker->create(calendar, event("weekly", ":20260302T090000Z", "RRULE:FREQ=WEEKLY\r\n"));
    titles("2026-06-01T00:00:00Z");
    EXPECT_TRUE(waitFor([&] { return titles("2026-06-01T00:00:00Z") == Titles{"later", "weekly"}; }, 20s));
}

TEST_F(EdsStoreTest, readsTheSameAsFromFiles)
{
    // A calendar's files in EDS, and the same as a folder, in the week of a change of the clocks.
    const std::string folder = std::string(MIVORA_TEST_DATA) + "/calendars";
    QDirIterator files(QString::fromStdString(folder), {QStringLiteral("*.ics")}, QDir::Files,
                       QDirIterator::Subdirectories);
    const QTimeZone zone = zoneNamed("Europe/Berlin");
    const Timestamp from = at("2026-03-23T00:00:00+01:00"), to = at("2026-04-01T00:00:00+02:00");
    LoadedStore asFolder({folder}, {"me@example.com"}, zone, "2026-03-23T08:00:00Z");
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        maker->import(calendar, file.readAll().toStdString());
    }
    store->setTimeZone(zone);

    using Meetings =
        std::multiset<std::tuple<Timestamp, Timestamp, std::vector<std::string>, std::size_t, bool>>;
    const auto meetings = [&](EventStore &asked) {
        Meetings found;
        for (const auto &event : asked.events(from, to, std::nullopt))
            found.emplace(event->start, event->end,
                          std::vector{event->eventIdentifier.value_or("-"), event->title.value_or("-"),
                                      event->url.value_or("-"), event->location.value_or("-"),
                                      event->notes.value_or("-")},
                          event->attendees.size(), event->isAllDay);
        return found;
    };
    waitFor([&] { return meetings(asFolder.store()).size() > 10; });
    Meetings wanted;
    waitFor([&] { return meetings(*store) == (wanted = meetings(asFolder.store())); }, 20s);
    EXPECT_THAT(meetings(*store), testing::ContainerEq(wanted));
    EXPECT_GT(wanted.size(), 10U);
}

TEST_F(EdsStoreTest, comesBackAfterItsServersDied)
{
    maker->create(calendar, event("before", ":20260310T090000Z"));
    ASSERT_TRUE(waitForTitles({"before"}));
    for (const char *server : {EdsWorld::calendarName, EdsWorld::sourcesName}) {
        for (const pid_t process : world->processes())
            if (process == world->processOf(server))
                kill(process, SIGKILL);
        waitAWhile(300ms);
        EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::fullAccess);
        EXPECT_EQ(titles().front(), "before");
        maker = std::make_unique<EdsMaker>();
        maker->create(calendar, event(server, ":20260310T090000Z"));
        EXPECT_TRUE(waitFor(
            [&] {
                const Titles now = titles();
                return std::count(now.begin(), now.end(), server) == 1;
            },
            40s))
            << server;
    }
    // What is new since then is followed as well.
    const std::string added = maker->addCalendar("Added");
    maker->create(added, event("new", ":20260310T090000Z"));
    EXPECT_TRUE(waitFor([&] { return eventsOf(added).size() == 1; }, 40s));
    maker->removeCalendar(added);
}

TEST_F(EdsStoreTest, holdsNoMoreWhenItsServersDieOverAndOver)
{
    std::vector<support::ProcessFigures> figures;
    for (int round = 0; round < 5; ++round) {
        const std::vector<pid_t> killed = world->processes();
        for (const pid_t process : killed)
            kill(process, SIGKILL);
        // Until then the bus sends calls to the dying.
        ASSERT_TRUE(waitFor([&] {
            return std::ranges::none_of(killed, [](pid_t process) { return kill(process, 0) == 0; });
        }));
        maker = std::make_unique<EdsMaker>();
        const std::string title = "round " + std::to_string(round);
        maker->create(calendar, event(title, ":20260310T090000Z"));
        ASSERT_TRUE(waitForTitles({title})) << testing::PrintToString(titles());
        maker->remove(calendar, title);
        ASSERT_TRUE(waitForTitles({}));
        figures.push_back(support::ProcessFigures::now());
    }
    // The first rounds fill caches; a thread of the library's may be on its way out.
    EXPECT_LE(figures.back().bytes, figures[1].bytes + 256 * 1024);
    EXPECT_LE(figures.back().descriptors, figures[1].descriptors + 2);
    EXPECT_LE(figures.back().threads, figures[1].threads + 2);
}

TEST_F(EdsStoreTest, answersWhileItsServersHang)
{
    maker->create(calendar, event("before", ":20260310T090000Z"));
    ASSERT_TRUE(waitForTitles({"before"}));
    const std::vector<pid_t> servers = world->processes();
    for (const pid_t process : servers)
        kill(process, SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(titles(), Titles{"before"});
    titles("2026-03-20T00:00:00Z");
    EXPECT_TRUE(calendarNamed(calendar));
    waitAWhile(500ms);
    EXPECT_EQ(titles(), Titles{"before"});
    // It can be closed, and another one opened.
    store.reset();
    EXPECT_LT(timer.elapsed(), 5000);
    for (const pid_t process : servers)
        kill(process, SIGCONT);
    openStore();
    maker->create(calendar, event("after", ":20260310T100000Z"));
    EXPECT_TRUE(waitForTitles({"after", "before"}));
}

TEST_F(EdsStoreTest, namesACalendarThatFailsAndShowsTheOthers)
{
    // One has a server that nobody runs, another one is of a kind that the server doesn't know.
    const std::string unreachable = maker->addCalDav("Nobody there", 1, "/none/", "me@example.com");
    maker->create(calendar, event("fine", ":20260310T090000Z"));
    EXPECT_TRUE(waitForTitles({"fine"}));
    testing::internal::CaptureStderr();
    store.reset();
    openStore();
    EXPECT_TRUE(waitForTitles({"fine"}));
    waitAWhile(1500ms);
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(calendarNamed(unreachable));
    EXPECT_TRUE(calendarNamed("unknown"));
    // Once, however often it is tried.
    const std::string named = "the calendar \"Unknown kind\" can't be opened";
    EXPECT_NE(log.find(named), log.npos) << log;
    EXPECT_EQ(log.find(named), log.rfind(named)) << log;
    maker->removeCalendar(unreachable);
}

} // namespace

} // namespace mivora
