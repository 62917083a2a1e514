#include "Calendar/CalendarFolder.h"
#include "Calendar/CalendarLoader.h"
#include "CalendarEds/DesktopLoader.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

EventWindow firstWindow()
{
    return windowAround(at("2026-03-10T08:00:00Z"), QTimeZone::utc());
}

DesktopCalendar calendarWith(const std::string &id, std::vector<std::string> owner = {})
{
    return {.id = id, .title = id, .account = "Desktop", .color = "#00ff00", .ownerAddresses = owner};
}

/// The desktop's calendars as the test tells of them; there is one, "work", at first.
class DesktopEventsTest : public testing::Test
{
protected:
    DesktopEventsTest() { events.setAccounts({{calendarWith("work")}, {}}); }

    void put(const std::string &uid, const std::string &start, const std::string &more = {},
             const std::string &recurrenceID = {}, const std::string &calendar = "work")
    {
        const std::string lines = recurrenceID.empty() ? more : "RECURRENCE-ID:" + recurrenceID + "\r\n";
        std::string text = "BEGIN:VEVENT\r\nUID:" + uid + "\r\nSUMMARY:" + uid + "\r\nDTSTART" + start +
                           "\r\nDURATION:PT1H\r\n" + lines + "END:VEVENT\r\n";
        events.putObjects(calendar, {{{uid, recurrenceID}, std::move(text)}});
    }

    /// What is known when all that was told is settled: titles with day and hour, in order of start.
    std::string settled(bool hasAll = true)
    {
        events.settle(hasAll);
        std::string titles;
        std::ranges::stable_sort(last.meetings, {}, [](const auto &meeting) { return meeting->start; });
        for (const auto &meeting : last.meetings) {
            if (!overlaps(meeting->start, meeting->end, at("2026-03-10T00:00:00Z"),
                          at("2026-03-13T00:00:00Z")))
                continue;
            const auto start =
                QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(meeting->start)), QTimeZone::utc());
            titles += meeting->title + start.toString(QStringLiteral(" d/H:mm  ")).toStdString();
            participation = meeting->participation;
        }
        return titles;
    }

    StoreUpdate last;
    /// In the last meeting.
    Participation participation{};
    DesktopEvents events{
        firstWindow(), {"mailto:Me@example.com"}, [this](StoreUpdate update) { last = std::move(update); }};
};

} // namespace

TEST_F(DesktopEventsTest, applyOverridesAsTheyComeAndGo)
{
    put("daily", ":20260301T090000Z", "RRULE:FREQ=DAILY\r\n");
    EXPECT_EQ(settled(), "daily 10/9:00  daily 11/9:00  daily 12/9:00  ");
    put("daily", ":20260312T150000Z", {}, "20260310T090000Z");
    put("daily", ":20280101T090000Z", {}, "20260311T090000Z");
    EXPECT_EQ(settled(), "daily 12/9:00  daily 12/15:00  ");
    events.removeObjects("work", {{"daily", "20260310T090000Z"}});
    EXPECT_EQ(settled(), "daily 10/9:00  daily 12/9:00  ");
    events.removeObjects("work", {{"daily", {}}});
    EXPECT_EQ(settled(), "");
}

TEST_F(DesktopEventsTest, keepWhatTheyKnowUntilALoadIsDone)
{
    put("kept", ":20260310T090000Z");
    put("gone", ":20260310T100000Z");
    events.setAccess(DesktopAccess::refused);
    settled(false);
    EXPECT_FALSE(last.isLoaded);
    EXPECT_EQ(last.status, AuthorizationStatus::restricted);
    events.setAccess(DesktopAccess::granted);
    events.startLoad("work");
    put("new", ":20260310T110000Z");
    EXPECT_EQ(settled(), "kept 10/9:00  gone 10/10:00  new 10/11:00  ");
    put("kept", ":20260310T090000Z");
    events.finishLoad("work");
    EXPECT_EQ(settled(), "kept 10/9:00  new 10/11:00  ");
    settled(false);
    EXPECT_TRUE(last.isLoaded) << "once loaded, always loaded";
    EXPECT_EQ(last.status, AuthorizationStatus::fullAccess);
}

TEST_F(DesktopEventsTest, takeTimeZonesThatComeLater)
{
    put("zoned", ";TZID=Moon Base:20260310T103000");
    put("floating", ":20260311T090000");
    testing::internal::CaptureStderr();
    EXPECT_EQ(settled(), "zoned 10/10:30  floating 11/9:00  ");
    EventWindow elsewhere = firstWindow();
    elsewhere.zone = QTimeZone("America/New_York");
    events.setWindow(elsewhere);
    EXPECT_EQ(settled(), "zoned 10/14:30  floating 11/13:00  ");
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 1) << log;
    events.putTimeZone("work", "Moon Base",
                       "BEGIN:VTIMEZONE\r\nTZID:Moon Base\r\nBEGIN:STANDARD\r\nDTSTART:19700101T000000\r\n"
                       "TZOFFSETFROM:+0130\r\nTZOFFSETTO:+0130\r\nEND:STANDARD\r\nEND:VTIMEZONE\r\n");
    EXPECT_EQ(settled(), "zoned 10/9:00  floating 11/13:00  ");
}

TEST_F(DesktopEventsTest, knowTheUserByTheBestAddressKnown)
{
    put("review", ":20260310T090000Z",
        "ATTENDEE;PARTSTAT=DECLINED:mailto:owner@example.com\r\n"
        "ATTENDEE;PARTSTAT=TENTATIVE:mailto:mail@example.com\r\n"
        "ATTENDEE;PARTSTAT=ACCEPTED:mailto:me@example.com\r\n");
    settled();
    EXPECT_EQ(participation, Participation::accepted) << "the settings'";
    events.setAccounts({{calendarWith("work", {"ann", "/owner@example.com/"})}, {"Mail@example.com"}});
    settled();
    EXPECT_EQ(participation, Participation::tentative) << "and the first that is the user";
    events.setAccounts({{calendarWith("work", {"ann", "mailto:owner@example.com"})}, {}});
    settled();
    EXPECT_EQ(participation, Participation::declined) << "the calendar's owner alone";
}

TEST_F(DesktopEventsTest, dropCalendarsWithTheirEvents)
{
    events.setAccounts({{calendarWith("work"), calendarWith("home")}, {}});
    put("same", ":20260310T090000Z");
    put("same", ":20260310T090000Z", {}, {}, "home");
    EXPECT_EQ(settled(), "same 10/9:00  same 10/9:00  ");
    const std::vector<CalendarInfo> expected{{"desktop:work", "work", "Desktop", Color{0, 255, 0}},
                                             {"desktop:home", "home", "Desktop", Color{0, 255, 0}}};
    EXPECT_EQ(last.calendars, expected);
    events.setAccounts({{calendarWith("home")}, {}});
    EXPECT_EQ(settled(), "same 10/9:00  ");
    events.setAccounts({{calendarWith("work"), calendarWith("home")}, {}});
    put("same", ":20260310T090000Z");
    EXPECT_EQ(settled(), "same 10/9:00  same 10/9:00  ") << "and back";
}

TEST(DesktopLoader, noticesThatTheServerIsInstalledLater)
{
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
