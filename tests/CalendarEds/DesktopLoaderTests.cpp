#include "Calendar/CalendarFolder.h"
#include "Calendar/MeetingList.h"
#include "CalendarEds/DesktopLoader.h"
#include "support/PrivateBus.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::ElementsAre;
using Titles = std::vector<std::string>;

EventWindow firstWindow()
{
    return windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc());
}

DesktopCalendar calendarWith(const std::string &id, std::vector<std::string> owner = {})
{
    return {
        .id = id, .title = id, .account = "Desktop", .color = "#00ff00", .ownerAddresses = std::move(owner)};
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

/// The desktop's calendars as the test tells of them.
class DesktopEventsTest : public testing::Test
{
protected:
    /// What is known when all that was told is settled: titles with day and time, in order of start.
    Titles settled(bool hasAll = true)
    {
        events.settle(hasAll);
        Titles titles;
        for (const auto &meeting : list.overlapping(at("2026-03-10T00:00:00Z"), at("2026-03-13T00:00:00Z")))
            titles.push_back(meeting->title + ' ' +
                             QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(meeting->start)), Qt::UTC)
                                 .toString(QStringLiteral("d/HH:mm"))
                                 .toStdString());
        return titles;
    }

    Participation participation()
    {
        settled();
        return list.overlapping(at("2026-03-10T00:00:00Z"), at("2026-03-11T00:00:00Z")).at(0)->participation;
    }

    MeetingList list;
    StoreUpdate last;
    std::size_t changes = 0;
    DesktopEvents events{firstWindow(), {"mailto:Me@example.com"}, [this](StoreUpdate update) {
                             changes = update.changes.added.size() + update.changes.removed.size();
                             list.change(update.changes);
                             last = std::move(update);
                         }};
};

} // namespace

TEST_F(DesktopEventsTest, applyOverridesAsTheyComeAndGo)
{
    events.setAccounts({{calendarWith("work")}, {}});
    events.putObjects("work", {object("daily", ":20260301T090000Z", "RRULE:FREQ=DAILY\r\n")});
    EXPECT_THAT(settled(), ElementsAre("daily 10/09:00", "daily 11/09:00", "daily 12/09:00"));
    events.putObjects("work", {object("daily", ":20260312T150000Z", {}, "20260310T090000Z"),
                               object("daily", ":20280101T090000Z", {}, "20260311T090000Z")});
    EXPECT_THAT(settled(), ElementsAre("daily 12/09:00", "daily 12/15:00"));
    events.removeObjects("work", {{"daily", "20260310T090000Z"}});
    EXPECT_THAT(settled(), ElementsAre("daily 10/09:00", "daily 12/09:00"));
    events.removeObjects("work", {{"daily", {}}});
    EXPECT_THAT(settled(), ElementsAre());
}

TEST_F(DesktopEventsTest, keepWhatTheyKnowUntilALoadIsDone)
{
    events.setAccounts({{calendarWith("work")}, {}});
    events.putObjects("work", {object("kept", ":20260310T090000Z"), object("gone", ":20260310T100000Z")});
    settled(false);
    EXPECT_FALSE(last.isLoaded);
    events.startLoad("work");
    events.putObjects("work", {object("new", ":20260310T110000Z")});
    EXPECT_THAT(settled(), ElementsAre("kept 10/09:00", "gone 10/10:00", "new 10/11:00"));
    events.putObjects("work", {object("kept", ":20260310T090000Z")});
    events.finishLoad("work");
    EXPECT_THAT(settled(), ElementsAre("kept 10/09:00", "new 10/11:00"));
    EXPECT_EQ(changes, 1U) << "what is as before stays the same";
    EXPECT_FALSE(last.calendars);
    EXPECT_TRUE(settled(false).size() == 2 && last.isLoaded) << "once loaded, always loaded";
}

TEST_F(DesktopEventsTest, takeTimeZonesThatComeLater)
{
    events.setAccounts({{calendarWith("work")}, {}});
    events.putObjects(
        "work", {object("zoned", ";TZID=Moon Base:20260310T103000"), object("floating", ":20260311T090000")});
    EXPECT_THAT(settled(), ElementsAre("zoned 10/10:30", "floating 11/09:00"));
    events.putTimeZone("work", "Moon Base",
                       "BEGIN:VTIMEZONE\r\nTZID:Moon Base\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\n"
                       "TZOFFSETFROM:+0130\r\nTZOFFSETTO:+0130\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n");
    EXPECT_THAT(settled(), ElementsAre("zoned 10/09:00", "floating 11/09:00"));
    EventWindow elsewhere = firstWindow();
    elsewhere.zone = zoneNamed("America/New_York");
    events.setWindow(elsewhere);
    EXPECT_THAT(settled(), ElementsAre("zoned 10/09:00", "floating 11/13:00"));
}

TEST_F(DesktopEventsTest, knowTheUserByTheBestAddressKnown)
{
    events.setAccounts({{calendarWith("work")}, {}});
    events.putObjects("work", {object("review", ":20260310T090000Z",
                                      "ATTENDEE;PARTSTAT=DECLINED:mailto:owner@example.com\r\n"
                                      "ATTENDEE;PARTSTAT=TENTATIVE:mailto:mail@example.com\r\n"
                                      "ATTENDEE;PARTSTAT=ACCEPTED:mailto:me@example.com\r\n")});
    EXPECT_EQ(participation(), Participation::accepted) << "the settings'";
    events.setAccounts({{calendarWith("work")}, {"mailto:mail@example.com"}});
    EXPECT_EQ(participation(), Participation::tentative) << "and the first that is the user";
    events.setAccounts(
        {{calendarWith("work", {"owner", "/ann@example.com/", "OWNER@example.com"})}, {"mail@example.com"}});
    EXPECT_EQ(participation(), Participation::declined) << "the calendar's owner alone";
}

TEST_F(DesktopEventsTest, dropCalendarsWithTheirEvents)
{
    events.setAccounts({{calendarWith("two"), calendarWith("one")}, {}});
    events.putObjects("one", {object("same", ":20260310T090000Z")});
    events.putObjects("two", {object("same", ":20260310T090000Z")});
    EXPECT_THAT(settled(), ElementsAre("same 10/09:00", "same 10/09:00"));
    ASSERT_TRUE(last.calendars);
    EXPECT_EQ(last.calendars->at(0), (CalendarInfo{"desktop:two", "two", "Desktop", Color{0, 255, 0}}));
    events.setAccounts({{calendarWith("two")}, {}});
    EXPECT_THAT(settled(), ElementsAre("same 10/09:00"));
}

TEST_F(DesktopEventsTest, tellWhetherTheyCanBeRead)
{
    const std::pair<DesktopAccess, AuthorizationStatus> cases[] = {
        {DesktopAccess::refused, AuthorizationStatus::restricted},
        {DesktopAccess::unavailable, AuthorizationStatus::denied},
        {DesktopAccess::granted, AuthorizationStatus::fullAccess},
    };
    for (const auto &[access, status] : cases) {
        events.setAccess(access);
        settled();
        EXPECT_EQ(last.status, status);
    }
}

TEST(DesktopLoader, noticesThatTheServerIsInstalledLater)
{
    if (!support::PrivateBus::isInstalled())
        GTEST_SKIP() << "dbus-daemon is not installed";
    const CalendarFolder services;
    support::PrivateBus bus(QString::fromStdString(services.path()));
    std::atomic<int> asked = 0, told = 0;
    // Without its plug-in.
    DesktopLoader loader({.bus = bus.connection(), .factory = [&] {
                              ++asked;
                              return nullptr;
                          }});
    loader.start(firstWindow(), [&](const StoreUpdate &update) {
        told += update.status == AuthorizationStatus::denied && update.isLoaded ? 1 : 100;
    });
    EXPECT_TRUE(waitFor([&] { return told == 1; })) << "nothing to read";
    EXPECT_EQ(asked, 0);
    services.write("sources.service",
                   "[D-BUS Service]\nName=org.gnome.evolution.dataserver.Sources7\nExec=/bin/false\n");
    bus.reload();
    EXPECT_TRUE(waitFor([&] { return told == 2; }));
    EXPECT_EQ(asked, 1);
}

} // namespace mivora
