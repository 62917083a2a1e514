#include "CalendarEds/DesktopLoader.h"
#include "CalendarEds/EdsMaker.h"
#include "CalendarEds/EdsWorld.h"
#include "CalendarEds/RadicaleServer.h"
#include "CalendarFolder/LoadedStore.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <csignal>
#include <gmock/gmock.h>

namespace mivora {

namespace {

using namespace std::chrono_literals;
using support::EdsMaker;
using support::EdsWorld;
using testing::HasSubstr;

/// A VEVENT of an hour.
std::string event(const std::string &uid, const std::string &start, const std::string &more = {})
{
    std::string text = "BEGIN:VEVENT\r\nUID:";
    text.append(uid).append("\r\nDTSTAMP:20260101T000000Z\r\nDTSTART").append(start);
    text.append("\r\nDURATION:PT1H\r\nSUMMARY:").append(uid).append("\r\n");
    return text.append(more).append("END:VEVENT\r\n");
}

std::string calendarText(const std::string &events)
{
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Example//EN\r\n" + events + "END:VCALENDAR\r\n";
}

/// The store over the real server, for the days around 10 March 2026 in UTC.
class EdsStoryTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!EdsWorld::isInstalled())
            GTEST_SKIP() << "Evolution Data Server is not installed";
    }

    void enter(const EdsWorld::Setup &setup = {{}, {}})
    {
        store.reset();
        world = std::make_unique<EdsWorld>(setup);
    }

    void openStore()
    {
        MemoryStore::Loaders loaders;
        loaders.push_back(std::make_unique<DesktopLoader>(
            DesktopLoader::Setup{.bus = world->bus().connection(), .addresses = {"me@example.com"}}));
        store = std::make_unique<MemoryStore>(
            access, windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()), std::move(loaders));
        ASSERT_TRUE(waitFor([this] { return store->isLoaded(); }, 40s));
    }

    std::string titles(const char *from = "2026-03-10T00:00:00Z", int days = 1)
    {
        std::string titles;
        for (const auto &meeting : store->meetings(at(from), at(from) + Seconds(86400 * days), std::nullopt))
            titles += (titles.empty() ? "" : ", ") + meeting->title;
        return titles;
    }

    bool waitForTitles(const std::string &wanted, const char *from = "2026-03-10T00:00:00Z", int days = 1)
    {
        return waitFor([&] { return titles(from, days) == wanted; }, 40s);
    }

    std::string titleOf(const std::string &calendar)
    {
        for (const CalendarInfo &known : store->calendars())
            if (known.id == "desktop:" + calendar)
                return known.accountTitle + '/' + known.title + (known.color ? known.color->hex() : "");
        return "none";
    }

    AccessMemory access{QDir::temp().filePath(QStringLiteral("unused")), AccessMemory::Permission::given};
    std::unique_ptr<EdsWorld> world;
    std::unique_ptr<MemoryStore> store;
};

} // namespace

TEST_F(EdsStoryTest, toldOfALocalCalendar)
{
    enter();
    world->writeSource(QStringLiteral("unknown"), "[Data Source]\nDisplayName=Unknown kind\nEnabled=true\n"
                                                  "Parent=local-stub\n[Calendar]\nBackendName=nonesuch\n");
    EdsMaker maker;
    const std::string calendar = maker.addCalendar("Work");
    maker.addCalDav("Nobody there", 1, "/none/", "me@example.com");
    testing::internal::CaptureStderr();
    openStore();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("the calendar \"Unknown kind\" can't be opened"));
    EXPECT_EQ(titleOf(calendar), "On This Computer/Work#3584e4");
    maker.edit(calendar, "DisplayName", "Office");
    EXPECT_TRUE(waitFor([&] { return titleOf(calendar) == "On This Computer/Office#3584e4"; }, 20s));

    maker.create(calendar, event("series", ":20260301T090000Z", "RRULE:FREQ=DAILY;COUNT=60\r\n"));
    EXPECT_TRUE(waitForTitles("series")) << titles();
    // To another day of the window, to a day far outside of it, and back.
    for (const char *start : {":20260312T150000Z", ":20270601T150000Z", ":20260310T200000Z"}) {
        maker.modify(calendar, event("series", start, "RECURRENCE-ID:20260310T090000Z\r\n"),
                     EdsMaker::Which::thisOne);
        EXPECT_TRUE(waitForTitles(std::string_view(start).starts_with(":20260310") ? "series" : "")) << start;
    }
    maker.remove(calendar, "series", "20260311T090000Z", EdsMaker::Which::thisOne);
    EXPECT_TRUE(waitForTitles("", "2026-03-11T00:00:00Z"));
    maker.remove(calendar, "series");
    EXPECT_TRUE(waitForTitles("", "2026-03-09T00:00:00Z", 4));

    maker.create(calendar, event("later", ":20260601T090000Z"));
    EXPECT_TRUE(waitForTitles("later", "2026-06-01T00:00:00Z"));
    // The server never finishes to expand this one.
    maker.import(calendar, calendarText(event("30 February", ":20260101T090000Z",
                                              "RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30\r\n") +
                                        event("after it", ":20260310T090000Z")));
    EXPECT_TRUE(waitForTitles("after it"));
    openStore();
    EXPECT_TRUE(waitForTitles("after it"));

    // It dies and comes back, hangs and is left.
    for (const pid_t process : world->processes())
        kill(process, SIGKILL);
    EXPECT_EQ(titles(), "after it");
    EXPECT_TRUE(waitFor([&] { return !world->processOf(EdsWorld::calendarName); }));
    EdsMaker().modify(calendar, event("after it", ":20260310T090000Z", "STATUS:CANCELLED\r\n"));
    EXPECT_TRUE(waitForTitles(""));
    const std::vector<pid_t> servers = world->processes();
    for (const pid_t process : servers)
        kill(process, SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    titles("2026-07-20T00:00:00Z");
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::fullAccess);
    store.reset();
    EXPECT_LT(timer.elapsed(), 5000);
}

TEST_F(EdsStoryTest, toldOfAnAccountOnTheNet)
{
    if (!support::RadicaleServer::isInstalled())
        GTEST_SKIP() << "Radicale or curl is not installed";
    enter();
    support::RadicaleServer server;
    const auto put = [&](const char *start, const std::string &more = {}) {
        return server.put(
            QStringLiteral("/ann/work/guarded.ics"),
            calendarText(event("Guarded", start,
                               more + "ORGANIZER:mailto:bob@example.com\r\n"
                                      "ATTENDEE;PARTSTAT=ACCEPTED:mailto:ann@example.com\r\n")));
    };
    ASSERT_TRUE(server.makeCalendar(QStringLiteral("/ann/work/")) && put(":20260310T090000Z"));
    EdsMaker maker;
    const std::string calendar =
        maker.addCalDav("Work", server.port(), "/ann/work/", "ann@example.com", "ann");
    maker.create(maker.addCalendar("Open"), event("Open", ":20260310T100000Z"));
    testing::internal::CaptureStderr();
    openStore();
    std::string log;
    EXPECT_TRUE(waitForTitles("Open"));
    EXPECT_TRUE(waitFor(
        [&] {
            log += testing::internal::GetCapturedStderr();
            testing::internal::CaptureStderr();
            return log.find("\"Work\" is not signed in") != log.npos;
        },
        20s))
        << log;
    testing::internal::GetCapturedStderr();
    maker.signIn(calendar, "ann", "secret");
    ASSERT_TRUE(waitForTitles("Guarded, Open")) << titles();
    const auto meeting = store->meetings(at("2026-03-10T09:00:00Z"), at("2026-03-10T09:30:00Z"), {}).at(0);
    EXPECT_EQ(meeting->participation, Participation::accepted);
    EXPECT_TRUE(put(":20260311T090000Z", "SEQUENCE:1\r\n"));
    maker.refresh(calendar);
    EXPECT_TRUE(waitForTitles("Guarded", "2026-03-11T00:00:00Z"));
}

TEST_F(EdsStoryTest, readsTheSameAsFromFiles)
{
    // A calendar's files in the server, and the same as a folder, in the week of a change of the clocks.
    enter();
    const std::string folder = std::string(MIVORA_TEST_DATA) + "/calendars";
    EdsMaker maker;
    const std::string calendar = maker.addCalendar("Work");
    for (QDirIterator files(QString::fromStdString(folder), {QStringLiteral("*.ics")}, QDir::Files,
                            QDirIterator::Subdirectories);
         files.hasNext();) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        maker.import(calendar, file.readAll().toStdString());
    }
    openStore();
    LoadedStore asFolder({folder}, {"me@example.com"});
    const auto meetings = [](EventStore &asked) {
        std::multiset<std::tuple<std::string, std::string, Timestamp, std::int64_t, bool>> found;
        for (const auto &m :
             asked.meetings(at("2026-03-23T00:00:00+01:00"), at("2026-04-01T00:00:00+02:00"), std::nullopt))
            found.emplace(m->id, m->title + (m->joinLink ? m->joinLink->webURL.text() : ""), m->end,
                          m->attendeeCount, m->isAllDay);
        return found;
    };
    for (EventStore *each :
         {static_cast<EventStore *>(store.get()), static_cast<EventStore *>(&asFolder.store())})
        each->setTimeZone(zoneNamed("Europe/Berlin"));
    waitFor(
        [&] {
            return meetings(asFolder.store()).size() > 10 && meetings(*store) == meetings(asFolder.store());
        },
        20s);
    EXPECT_THAT(meetings(*store), testing::ContainerEq(meetings(asFolder.store())));
    EXPECT_GT(meetings(*store).size(), 10U);
}

TEST_F(EdsStoryTest, isDeniedOrRestrictedWhereTheServerCantBeHad)
{
    enter({.wrapper = QStringLiteral("/bin/false"), .busRules = {}});
    openStore();
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::denied);
    enter(
        {.wrapper = {}, .busRules = "<deny send_destination=\"org.gnome.evolution.dataserver.Sources5\"/>"});
    openStore();
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::restricted);
    enter({.wrapper = QStringLiteral("/bin/sh -c 'sleep 2; exec \"$@\"' sh"), .busRules = {}});
    openStore();
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::fullAccess);
}

} // namespace mivora
