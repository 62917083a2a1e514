#include "Calendar/CalendarFolder.h"
#include "Calendar/ScriptedCalendars.h"
#include "Calendar/desktop/DesktopStore.h"
#include "support/PrivateBus.h"

#include <QDBusMessage>
#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Titles = std::vector<std::string>;

DesktopCalendar calendarWith(const std::string &id, std::vector<std::string> owner = {})
{
    return {.id = id, .title = id, .account = {}, .color = "#00ff00", .ownerAddresses = std::move(owner)};
}

CalendarObject object(const std::string &uid, const std::string &start, const std::string &more = {},
                      const std::string &recurrenceID = {})
{
    std::string text = "BEGIN:VEVENT\r\nUID:";
    text.append(uid).append("\r\nSUMMARY:").append(uid).append("\r\nDTSTART").append(start);
    text.append("\r\nDURATION:PT1H\r\n").append(more);
    if (!recurrenceID.empty())
        text.append("RECURRENCE-ID:").append(recurrenceID).append("\r\n");
    return {{uid, recurrenceID}, text.append("END:VEVENT\r\n")};
}

/// A store over calendars that the test speaks for, on a bus where they can be activated.
class DesktopStoreTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!support::PrivateBus::isInstalled())
            GTEST_SKIP() << "dbus-daemon is not installed";
        services.write("sources.service", "[D-BUS Service]\nName=org.gnome.evolution.dataserver.Sources5\n"
                                          "Exec=/bin/false\n");
        bus = std::make_unique<support::PrivateBus>(QString::fromStdString(services.path()));
        open([script = script] { return std::make_unique<ScriptedCalendars>(script); });
    }

    void open(DesktopCalendarsFactory factory)
    {
        store = std::make_unique<DesktopStore>(
            DesktopStore::Setup{.bus = bus->connection(),
                                .window = windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()),
                                .addresses = {"me@example.com"},
                                .factory = std::move(factory)});
        QObject::connect(store.get(), &EventStore::changed, store.get(), [this] { ++changes; });
    }

    /// Has the desktop do \a step, and waits until the store has heard of it.
    void tell(DesktopScript::Step step)
    {
        const int before = changes;
        script->tell([step = std::move(step)](DesktopCalendarsReader &reader) {
            step(reader);
            reader.settle(true);
        });
        waitFor([&] { return changes > before; }, std::chrono::seconds(5));
    }

    void tellCalendar(DesktopCalendar calendar, std::vector<CalendarObject> objects)
    {
        tell([&](DesktopCalendarsReader &reader) {
            const std::string id = calendar.id;
            reader.setAccounts({{std::move(calendar)}, {}});
            reader.putObjects(id, std::move(objects));
        });
    }

    /// Titles with the day of the month, in order of start.
    Titles titles(const char *from = "2026-03-10T00:00:00Z", const char *to = "2026-03-13T00:00:00Z")
    {
        StoreEvents found = store->events(at(from), at(to), std::nullopt);
        std::stable_sort(found.begin(), found.end(), [](auto &a, auto &b) { return a->start < b->start; });
        Titles titles;
        for (const auto &event : found)
            titles.push_back(event->title.value_or("-") + ' ' +
                             QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(event->start)), Qt::UTC)
                                 .toString(QStringLiteral("d/HH:mm"))
                                 .toStdString());
        return titles;
    }

    CalendarFolder services;
    std::unique_ptr<support::PrivateBus> bus;
    std::shared_ptr<DesktopScript> script = std::make_shared<DesktopScript>();
    std::unique_ptr<DesktopStore> store;
    int changes = 0;
};

TEST_F(DesktopStoreTest, appliesOverridesAsTheyComeAndGo)
{
    const std::string rule = "RRULE:FREQ=DAILY\r\n";
    tellCalendar(calendarWith("work"), {object("daily", ":20260301T090000Z", rule)});
    EXPECT_THAT(titles(), ElementsAre("daily 10/09:00", "daily 11/09:00", "daily 12/09:00"));
    tell([](auto &reader) {
        reader.putObjects("work", {object("daily", ":20260312T150000Z", {}, "20260310T090000Z"),
                                   object("daily", ":20280101T090000Z", {}, "20260311T090000Z")});
    });
    EXPECT_THAT(titles(), ElementsAre("daily 12/09:00", "daily 12/15:00"));
    tell([](auto &reader) { reader.removeObjects("work", {{"daily", "20260310T090000Z"}}); });
    EXPECT_THAT(titles(), ElementsAre("daily 10/09:00", "daily 12/09:00"));
    tell([](auto &reader) { reader.removeObjects("work", {{"daily", {}}}); });
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(DesktopStoreTest, keepsWhatItKnowsUntilALoadIsDone)
{
    tellCalendar(calendarWith("work"),
                 {object("kept", ":20260310T090000Z"), object("gone", ":20260310T100000Z")});
    const auto kept =
        store->events(at("2026-03-10T09:00:00Z"), at("2026-03-10T09:30:00Z"), std::nullopt).at(0);
    script->tell([](auto &reader) {
        reader.startLoad("work");
        reader.settle(true);
    });
    tell([](auto &reader) { reader.putObjects("work", {object("new", ":20260310T110000Z")}); });
    EXPECT_THAT(titles(), ElementsAre("kept 10/09:00", "gone 10/10:00", "new 10/11:00"));
    tell([](auto &reader) {
        reader.putObjects("work", {object("kept", ":20260310T090000Z")});
        reader.finishLoad("work");
    });
    EXPECT_THAT(titles(), ElementsAre("kept 10/09:00", "new 10/11:00"));
    // What is as before stays the same object, and nobody is told of news that are none.
    EXPECT_EQ(store->events(at("2026-03-10T09:00:00Z"), at("2026-03-10T09:30:00Z"), std::nullopt).at(0),
              kept);
    const int before = changes;
    script->tell([](auto &reader) {
        reader.putObjects("work", {object("kept", ":20260310T090000Z")});
        reader.settle(true);
    });
    waitAWhile(std::chrono::milliseconds(200));
    EXPECT_EQ(changes, before);
}

TEST_F(DesktopStoreTest, takesTimeZonesThatComeLater)
{
    tellCalendar(calendarWith("work"), {object("zoned", ";TZID=Moon Base:20260310T103000")});
    EXPECT_THAT(titles(), ElementsAre("zoned 10/10:30"));
    tell([](auto &reader) {
        reader.putTimeZone(
            "work", "Moon Base",
            "BEGIN:VTIMEZONE\r\nTZID:Moon Base\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\n"
            "TZOFFSETFROM:+0130\r\nTZOFFSETTO:+0130\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n");
    });
    EXPECT_THAT(titles(), ElementsAre("zoned 10/09:00"));
    // Floating times are meant where the user is.
    tell([](auto &reader) { reader.putObjects("work", {object("floating", ":20260311T090000")}); });
    store->setTimeZone(zoneNamed("America/New_York"));
    EXPECT_TRUE(waitFor([&] { return titles() == Titles{"zoned 10/09:00", "floating 11/13:00"}; }));
}

TEST_F(DesktopStoreTest, findsTheUserByTheBestAddressKnown)
{
    const std::string attendees = "ATTENDEE:mailto:me@example.com\r\nATTENDEE:mailto:mail@example.com\r\n"
                                  "ATTENDEE:mailto:owner@example.com\r\n";
    const auto marked = [&] {
        std::vector<bool> marks;
        const StoreEvents events = store->events(at("2026-03-10T00:00:00Z"), at("2026-03-11T00:00:00Z"), {});
        for (const StoreAttendee &attendee : events.at(0)->attendees)
            marks.push_back(attendee.isCurrentUser);
        return marks;
    };
    tellCalendar(calendarWith("work"), {object("review", ":20260310T090000Z", attendees)});
    EXPECT_THAT(marked(), ElementsAre(true, false, false));
    tell([](auto &reader) { reader.setAccounts({{calendarWith("work")}, {"mail@example.com"}}); });
    EXPECT_THAT(marked(), ElementsAre(true, true, false));
    tell([](auto &reader) {
        reader.setAccounts({{calendarWith("work", {"owner@example.com"})}, {"mail@example.com"}});
    });
    EXPECT_THAT(marked(), ElementsAre(false, false, true));
}

TEST_F(DesktopStoreTest, dropsCalendarsWithTheirEvents)
{
    tell([](auto &reader) {
        reader.setAccounts({{calendarWith("one"), calendarWith("two")}, {}});
        reader.putObjects("one", {object("same", ":20260310T090000Z")});
        reader.putObjects("two", {object("same", ":20260310T090000Z")});
    });
    EXPECT_THAT(titles(), ElementsAre("same 10/09:00", "same 10/09:00"));
    tell([](auto &reader) { reader.setAccounts({{calendarWith("two")}, {}}); });
    EXPECT_THAT(titles(), ElementsAre("same 10/09:00"));
    ASSERT_EQ(store->calendars().size(), 1U);
    EXPECT_EQ(store->calendars()[0].color, Color::fromHex("#00ff00"));
    // What comes late for a calendar that is gone is nothing to anybody.
    tell([](auto &reader) {
        reader.putObjects("one", {object("late", ":20260310T090000Z")});
        reader.finishLoad("one");
        reader.setAccounts({{}, {}});
    });
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(DesktopStoreTest, tellsWhetherItCanBeRead)
{
    EXPECT_FALSE(store->isLoaded());
    std::vector<bool> answers;
    store->requestFullAccess([&](bool granted) { answers.push_back(granted); });
    const std::pair<DesktopAccess, AuthorizationStatus> cases[] = {
        {DesktopAccess::refused, AuthorizationStatus::restricted},
        {DesktopAccess::unavailable, AuthorizationStatus::denied},
        {DesktopAccess::granted, AuthorizationStatus::fullAccess},
    };
    for (const auto &[access, status] : cases) {
        tell([access = access](auto &reader) { reader.setAccess(access); });
        EXPECT_EQ(store->authorizationStatus(), status);
    }
    EXPECT_THAT(answers, ElementsAre(false));

    // Without its plug-in, and on a bus that doesn't know it.
    open([] { return nullptr; });
    EXPECT_TRUE(waitFor([&] { return store->isLoaded(); }));
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::denied);
    store = std::make_unique<DesktopStore>(
        DesktopStore::Setup{.bus = support::PrivateBus().connection(),
                            .window = windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc()),
                            .addresses = {}});
    EXPECT_TRUE(waitFor([&] { return store->isLoaded(); }));
    EXPECT_EQ(store->authorizationStatus(), AuthorizationStatus::denied);
}

TEST(DesktopService, isNoticedWhenItIsInstalledLater)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    const CalendarFolder services;
    support::PrivateBus bus(QString::fromStdString(services.path()));
    QString found;
    int missing = 0;
    const DesktopService service(bus.connection());
    QObject::connect(&service, &DesktopService::found, [&](const QString &name) { found = name; });
    QObject::connect(&service, &DesktopService::missing, [&] { ++missing; });
    EXPECT_TRUE(waitFor([&] { return missing > 0; }));
    services.write("sources.service",
                   "[D-BUS Service]\nName=org.gnome.evolution.dataserver.Sources7\nExec=/bin/false\n");
    // As a package manager has it done.
    bus.connection().call(QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReloadConfig")));
    EXPECT_TRUE(waitFor([&] { return found == QLatin1String("org.gnome.evolution.dataserver.Sources7"); }));
}

} // namespace

} // namespace mivora
