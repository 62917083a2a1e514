#include "Calendar/CalendarFolder.h"
#include "Calendar/EventKitSource.h"
#include "Calendar/LoadWait.h"

#include <gmock/gmock.h>

namespace mivora {

namespace {

using testing::ElementsAre;
using Lines = std::vector<std::string>;

/// Meetings in one line each: "09:15 Team stand-up meet".
class SampleCalendars : public testing::Test
{
protected:
    Lines dayLines(const char *day, bool withWholeDays = false)
    {
        const QTimeZone zone = zoneNamed("Europe/Berlin");
        const QDateTime midnight = QDate::fromString(QLatin1String(day), Qt::ISODate).startOfDay(zone);
        const Timestamp start = timestampFromSeconds(double(midnight.toSecsSinceEpoch()));
        const Timestamp end =
            timestampFromSeconds(double(midnight.date().addDays(1).startOfDay(zone).toSecsSinceEpoch()));
        auto store = std::make_unique<FolderStore>(
            FolderStore::Setup{{MIVORA_TEST_DATA "/calendars"}, windowAround(start, zone), {}});
        EXPECT_TRUE(waitUntilLoaded(*store, std::chrono::seconds(10)));
        EventKitSource source(std::move(store));
        calendars = source.calendars();
        Lines lines;
        for (const Meeting &meeting : source.meetings(start, end, std::nullopt)) {
            if (meeting.isAllDay == withWholeDays)
                lines.push_back(line(meeting, zone));
        }
        return lines;
    }

    static std::string line(const Meeting &meeting, const QTimeZone &zone)
    {
        const auto clock = [&](Timestamp time) {
            return QDateTime::fromSecsSinceEpoch(qint64(secondsSinceEpoch(time)), zone)
                .toString(QStringLiteral("HH:mm"))
                .toStdString();
        };
        std::string text = clock(meeting.start) + "-" + clock(meeting.end) + " " + meeting.title;
        if (meeting.joinLink)
            text += " " + std::string(rawValue(meeting.joinLink->service));
        if (meeting.participation != Participation::unknown)
            text += " " + std::string(participationName(meeting.participation));
        return text;
    }

    std::vector<CalendarInfo> calendars;
};

} // namespace

TEST_F(SampleCalendars, showTheFullDay)
{
    EXPECT_THAT(dayLines("2026-03-10"),
                ElementsAre("08:00-08:45 Dentist", "09:15-09:30 Team stand-up meet accepted",
                            "14:00-15:00 Design review zoom accepted",
                            "14:30-15:30 Interview: back-end engineer meet tentative",
                            "15:00-15:30 Contoso sync teams accepted", "16:00-17:00 Quarterly numbers teams",
                            "16:00-17:00 Vendor pitch webex declined", "19:30-21:30 Choir",
                            "21:30-22:00 Call with Auckland zoom"));
    EXPECT_THAT(dayLines("2026-03-10", true),
                ElementsAre("00:00-00:00 Birthday of Mira", "00:00-00:00 Priya out of office"));
    Lines names;
    for (const CalendarInfo &calendar : calendars)
        names.push_back(calendar.accountTitle + "/" + calendar.title + " " +
                        (calendar.color ? calendar.color->hex() : "-"));
    EXPECT_THAT(names,
                ElementsAre("/Holidays in Berlin #e6007e", "/alex.moreno@example.com -",
                            "Contoso/Calendar #0078d4", "Fastmail/Private #3a7bd5", "Fastmail/club #2e8b57"));
}

TEST_F(SampleCalendars, followExceptionsZonesAndChangesOfTheClocks)
{
    EXPECT_THAT(dayLines("2026-03-08"), ElementsAre("07:30-08:30 Night shift"));
    EXPECT_THAT(dayLines("2026-03-11"),
                ElementsAre("09:00-09:30 Tokyo check-in facetime", "13:00-13:00 Newsletter deadline",
                            "14:00-15:00 Security training other", "19:00-20:30 Board meeting other"));
    EXPECT_THAT(dayLines("2026-03-12"), ElementsAre("10:00-10:15 Team stand-up (moved) meet accepted"));
    EXPECT_THAT(dayLines("2026-03-13"), ElementsAre());
    EXPECT_THAT(dayLines("2026-03-29"),
                ElementsAre("01:30-04:30 Sunday on-call handover meet", "10:00-10:30 Family call facetime"));
}

} // namespace mivora
