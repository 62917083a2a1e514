#include "ICalendar/ReadText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace mivora::ical {

namespace {

/// Makes random calendars around a few days, so that events meet the window and each other.
class CalendarMaker
{
public:
    explicit CalendarMaker(unsigned seed) : m_random(seed) {}

    int below(int n) { return int(m_random() % unsigned(n)); }

    std::string calendar()
    {
        static const std::string zone =
            "BEGIN:VTIMEZONE\nTZID:Office\nBEGIN:STANDARD\nDTSTART:20000101T000000\nTZOFFSETFROM:+1200\n"
            "TZOFFSETTO:+1200\nEND:STANDARD\nEND:VTIMEZONE\n";
        std::string text = "BEGIN:VCALENDAR\n" + (below(3) == 0 ? zone : std::string());
        for (int i = 0, n = 1 + below(6); i < n; ++i)
            text += event();
        return text + (below(20) ? "END:VCALENDAR\n" : "BEGIN:VEVENT\n");
    }

private:
    std::string pick(std::initializer_list<const char *> choices)
    {
        return *(choices.begin() + below(int(choices.size())));
    }

    std::string number(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

    std::string date()
    {
        return pick({"202406", "202406", "202406", "202403", "202410", "202306", "199001"}) +
               number(1 + below(31));
    }

    std::string clock() { return "T" + number(below(24)) + pick({"0000", "3000", "5959"}); }

    std::string zone()
    {
        return pick({";TZID=Europe/Berlin", ";TZID=America/New_York", ";TZID=\"Tokyo Standard Time\"",
                     ";TZID=Office", ";TZID=Pacific/Kiritimati", ";X-P=\"a:b\";TZID=Pacific/Pago_Pago",
                     ";TZID=Nowhere", ""});
    }

    std::string time(const std::string &name)
    {
        if (below(5) == 0)
            return name + ";VALUE=DATE:" + date();
        if (below(4) == 0)
            return name + ':' + date() + clock() + 'Z';
        return name + zone() + ':' + date() + clock();
    }

    std::string rule()
    {
        std::string text = "RRULE:FREQ=" + pick({"DAILY", "WEEKLY", "MONTHLY", "YEARLY", "HOURLY"});
        if (below(2))
            text += ";INTERVAL=" + std::to_string(1 + below(5));
        if (below(3) == 0)
            text += ";COUNT=" + std::to_string(1 + below(40));
        else if (below(2))
            text += ";UNTIL=" + date() + (below(2) ? clock() + (below(2) ? "Z" : "") : "");
        return text + pick({"", "", ";BYDAY=MO,FR", ";BYDAY=-1FR", ";BYMONTHDAY=10,-1", ";BYMONTH=6",
                            ";BYSETPOS=1"});
    }

    std::string line(const std::string &text)
    {
        // Folded anywhere, now and then.
        if (text.size() < 3 || below(8))
            return text + (below(2) ? "\r\n" : "\n");
        const std::size_t at = 1 + std::size_t(below(int(text.size()) - 1));
        return text.substr(0, at) + (below(2) ? "\r\n " : "\n\t") + text.substr(at) + "\n";
    }

    std::string event()
    {
        std::string text = line("BEGIN:VEVENT");
        if (below(8))
            text += line("UID:" + pick({"a", "b", "c"}));
        text += line("SUMMARY:" + std::to_string(below(100)));
        if (below(30))
            text += line(time("DTSTART"));
        if (below(2))
            text += line(time("DTEND"));
        else if (below(2))
            text += line("DURATION:" + pick({"PT1H", "P1D", "P1W", "-PT5M", "P1DT12H", "nonsense"}));
        for (int i = below(7) - 4; i > 0; --i)
            text += line(rule());
        if (below(6) == 0)
            text += line(time("RDATE") + (below(3) ? "" : "/PT2H"));
        if (below(5) == 0)
            text += line(time("EXDATE"));
        if (below(3) == 0)
            text += line(time(below(6) ? "RECURRENCE-ID" : "RECURRENCE-ID;RANGE=THISANDFUTURE"));
        if (below(6) == 0)
            text += line("STATUS:" + pick({"CANCELLED", "CONFIRMED"}));
        if (below(4) == 0)
            text += line("SEQUENCE:" + std::to_string(below(3)));
        if (below(10) == 0)
            text += "BEGIN:VALARM\nDURATION:P9W\nDTSTART:20240610\nEND:VALARM\n";
        return text + (below(40) ? line("END:VEVENT") : "");
    }

    std::mt19937 m_random;
};

bool isCut(const TextProblem &problem)
{
    return problem.message.find("too often") != std::string::npos;
}

std::vector<EventWindow> windows()
{
    return {windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00"),
            windowOf("2024-06-10T00:00:00", "2024-06-11T00:00:00", "Pacific/Kiritimati"),
            windowOf("2024-03-30T12:00:00", "2024-04-01T00:00:00", "America/New_York"),
            windowOf("2024-10-27T02:30:00", "2024-10-27T02:30:01"),
            windowOf("2035-01-01T00:00:00", "2035-03-01T00:00:00", "Pacific/Pago_Pago")};
}

} // namespace

TEST(ShortCut, readsWhatTheFullReadingReads)
{
    std::size_t found = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        const std::string text = CalendarMaker(seed).calendar();
        for (const EventWindow &window : windows()) {
            const CalendarText quick = readCalendarText(text, window);
            const CalendarText full = readCalendarTextInFull(text, window);
            ASSERT_EQ(quick.occurrences, full.occurrences) << "seed " << seed << '\n' << text;
            ASSERT_EQ(quick.earliest, full.earliest);
            ASSERT_EQ(quick.latest, full.latest);
            for (const Occurrence &event : full.occurrences) {
                ASSERT_LE(full.earliest, event.start.time_since_epoch().count()) << text;
                ASSERT_GE(full.latest, event.end.time_since_epoch().count()) << text;
            }
            found += full.occurrences.size();
        }
    }
    EXPECT_GT(found, 1'000u);
}

TEST(ShortCut, aLongerWindowHasTheSameOccurrences)
{
    const EventWindow day = windowOf("2024-06-10T00:00:00", "2024-06-11T00:00:00");
    const EventWindow quarter = windowOf("2024-05-01T00:00:00", "2024-08-01T00:00:00");
    for (unsigned seed = 10'000; seed < 10'300; ++seed) {
        const std::string text = CalendarMaker(seed).calendar();
        std::vector<Occurrence> expected;
        const CalendarText full = readCalendarTextInFull(text, quarter);
        if (std::any_of(full.problems.begin(), full.problems.end(), isCut))
            continue;
        for (const Occurrence &event : full.occurrences)
            if (event.start < day.to &&
                (event.end > day.from || (event.end == event.start && event.start >= day.from)))
                expected.push_back(event);
        ASSERT_EQ(readCalendarText(text, day).occurrences, expected) << "seed " << seed << '\n' << text;
    }
}

} // namespace mivora::ical
