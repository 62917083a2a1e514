#include "ICalendar/ReadText.h"

#include <gtest/gtest.h>
#include <random>

namespace mivora::ical {

namespace {

/// A random calendar around a few days, so that events meet the window and each other.
std::string randomCalendar(unsigned seed)
{
    std::mt19937 random(seed);
    const auto below = [&](int n) { return int(random() % unsigned(n)); };
    const auto pick = [&](std::initializer_list<const char *> choices) {
        return std::string(*(choices.begin() + below(int(choices.size()))));
    };
    const auto time = [&](const std::string &name) {
        const std::string zone =
            pick({";TZID=America/New_York", ";TZID=\"Tokyo Standard Time\"", ";VALUE=DATE",
                  ";X-P=\"a:b\";TZID=Pacific/Kiritimati", ";TZID=Pacific/Pago_Pago", "", "Z"});
        const std::string date = pick({"202406", "202406", "202403", "202410", "202306", "199001"}) +
                                 std::to_string(10 + below(21));
        const std::string clock = zone == ";VALUE=DATE" ? "" : pick({"T000000", "T093000", "T235959"});
        return name + (zone == "Z" ? ':' + date + clock + 'Z' : zone + ':' + date + clock) + "\n";
    };
    std::string text;
    for (int events = 1 + below(6); events > 0; --events) {
        const std::pair<int, std::string> lines[] = {
            {97, time("DTSTART")},
            {50, time("DTEND")},
            {25, "DURATION:" + pick({"PT1H", "P1D", "P1W", "-PT5M", "P1DT12H", "nonsense"}) + "\n"},
            {30,
             "RRULE:INTERVAL=" + pick({"1", "2", "5"}) + pick({"", ";BYDAY=-1FR,MO", ";BYMONTHDAY=10,-1"}) +
                 ";FREQ=" + pick({"DAILY", "WEEKLY", "MONTHLY", "YEARLY", "HOURLY"}) +
                 pick({"", ";COUNT=2", ";COUNT=30", ";UNTIL=20240611", ";UNTIL=20240610T120000Z"}) + "\n"},
            {16, time("RDATE")},
            {20, time("EXDATE")},
            {25, time("RECURRENCE-ID")},
            {10, time("RECURRENCE-ID;RANGE=THISANDFUTURE")},
            {16, "STATUS:CANCELLED\n"},
            {25, "SEQUENCE:1\n"},
            {10, "BEGIN:VALARM\nDURATION:P9W\nEND:VALARM\n"},
        };
        text += "BEGIN:VEVENT\nUID:" + pick({"a", "b", ""}) + "\n";
        for (const auto &[percent, line] : lines)
            text += below(100) < percent ? line : "";
        text += "END:VEVENT\n";
    }
    return calendarOf(text);
}

} // namespace

TEST(ShortCut, findsTheOccurrencesThatALongerWindowHas)
{
    const EventWindow windows[] = {
        windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00"),
        windowOf("2024-06-10T00:00:00", "2024-06-11T00:00:00", "Pacific/Kiritimati"),
        windowOf("2024-03-30T12:00:00", "2024-04-01T00:00:00", "America/New_York"),
        windowOf("2024-10-27T02:30:00", "2024-10-27T02:30:01")};
    for (unsigned seed = 0; seed < 400; ++seed) {
        const std::string text = randomCalendar(seed);
        for (const EventWindow &window : windows) {
            const CalendarText calendar = readCalendarText(text, window);
            const auto expected = occurrencesAmongMore(text, window);
            ASSERT_TRUE(calendar.occurrences == expected.value_or(calendar.occurrences)) << text;
            for (const Occurrence &event : calendar.occurrences) {
                ASSERT_LE(calendar.earliest, event.start.time_since_epoch().count()) << text;
                ASSERT_GE(calendar.latest, event.end.time_since_epoch().count()) << text;
            }
        }
    }
}

} // namespace mivora::ical
