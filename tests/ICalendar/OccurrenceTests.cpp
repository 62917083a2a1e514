#include "ICalendar/ReadText.h"

#include <gtest/gtest.h>

namespace mivora::ical {

namespace {

// Events of an hour, of no length and of a day, and what overrides make of the first.
const std::string monday = "A 0610T070000/0610T080000";
const std::string tuesday = "A 0611T070000/0611T080000";
const std::string mondayAtNine = "A 0610T070000/0610T070000";
const std::string mondayAllDay = "A 0609T220000/0610T220000 day";
const std::string tuesdayAllDay = "A 0610T220000/0611T220000 day";
const std::string noon = "B 0610T120000/0610T120000";

/// With its name, the events and what occurs.
using Case = std::tuple<const char *, std::string, std::vector<std::string>>;

/// Every case is read for 10 and 11 June 2024 in Berlin, two hours ahead of UTC.
void check(const std::vector<Case> &cases,
           const EventWindow &window = windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00"))
{
    for (const auto &[name, text, expected] : cases) {
        std::vector<std::string> lines;
        for (const Occurrence &occurrence : readCalendarText(calendarOf(text), window).occurrences)
            lines.push_back(lineOf(occurrence));
        EXPECT_EQ(lines, expected) << name;
    }
}

} // namespace

TEST(Occurrences, timesAreReadInTheZoneTheyName)
{
    const std::pair<const char *, const char *> starts[] = {
        {"floating", "DTSTART:20240610T090000"},
        {"IANA, its end in another",
         "DTSTART;TZID=Europe/Helsinki:20240610T100000\nDTEND;TZID=Europe/Berlin:20240610T100000"},
        {"Windows", "DTSTART;X-A=\"a:b;c\";TZID=\"Eastern Standard Time\":20240610T030000"},
        {"old", "DTSTART;TZID=US/Eastern:20240610T030000"},
        {"Windows, old", "DTSTART;TZID=India Standard Time:20240610T123000"},
        {"prefixed, old", "DTSTART;TZID=/example.org/1/America/Buenos_Aires:20240610T040000"},
        {"prefixed", "DTSTART;TZID=/freeassociation.sourceforge.net/Tzfile/Europe/Berlin:20240610T090000"},
        {"Outlook's UTC", "DTSTART;TZID=tzone://Microsoft/Utc:20240610T070000"},
        {"UTC wins over TZID", "dtstart;tzid=Asia/Tokyo:20240610T070000Z"},
        {"unknown is floating", "DTSTART;TZID=Nowhere:20240610T090000"},
    };
    for (const auto &[name, start] : starts)
        check({{name, eventOf(start + std::string("\nDURATION:pt1h")), {monday}}});
}

TEST(Occurrences, definedZonesCountForUnknownNamesAndAbbreviations)
{
    const auto zone = [](const std::string &id, const std::string &more = {}) {
        return "BEGIN:VTIMEZONE\nTZID:" + id + "\n" + more +
               "BEGIN:STANDARD\nDTSTART:16011028T030000\nTZOFFSETFROM:+0400\nTZOFFSETTO:+0300\n"
               "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10;UNTIL=20251026T000000Z\nRDATE:20261025T040000\n"
               "END:STANDARD\nBEGIN:DAYLIGHT\nDTSTART:16010325T020000\nTZOFFSETFROM:+0300\n"
               "TZOFFSETTO:+040000\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\nEND:DAYLIGHT\nEND:VTIMEZONE\n";
    };
    const auto event = [](const std::string &id, const std::string &day = "20240610") {
        return eventOf("DTSTART;TZID=" + id + ':' + day + "T110000\nDURATION:PT1H");
    };
    check({
        {"own name", zone("Our Office") + event("Our Office"), {monday}},
        {"escaped name", zone("Rome\\, Vienna") + event("\"Rome, Vienna\""), {monday}},
        {"place", zone("O", "X-LIC-LOCATION:Asia/Tokyo\n") + event("O"), {"A 0610T020000/0610T030000"}},
        {"wrong definition", zone("Asia/Tokyo") + event("Asia/Tokyo"), {"A 0610T020000/0610T030000"}},
        {"abbreviation", zone("EST", "X-LIC-LOCATION:EST\n") + event("EST"), {monday}},
        {"abbreviation alone", eventOf("DTSTART;TZID=EST:20240610T020000\nDURATION:PT1H"), {monday}},
        {"of another calendar",
         zone("O") + "END:VCALENDAR\nBEGIN:VCALENDAR\n" + event("O"),
         {"A 0610T090000/0610T100000"}},
    });
    // The changes by the last UNTIL and by RDATE.
    const std::string daily =
        "DTSTART;TZID=O:20251025T110000\nRRULE:FREQ=YEARLY;BYMONTH=10;BYMONTHDAY=24,25,26";
    check({{"changes",
            zone("O") + eventOf(daily),
            {"A 1025T070000/1025T070000", "A 1026T080000/1026T080000", "A 1024T070000/1024T070000",
             "A 1025T080000/1025T080000", "A 1026T080000/1026T080000"}}},
          windowOf("2025-10-01T00:00:00", "2026-11-01T00:00:00"));
}

TEST(Occurrences, endsAreWhatTheEventSays)
{
    const std::string atNine = "DTSTART:20240610T070000Z\n", wholeDay = "DTSTART;VALUE=DATE:20240610\n";
    check({
        {"before the start", eventOf(atNine + "DTEND:20240610T060000Z"), {mondayAtNine}},
        {"broken duration", eventOf(atNine + "DURATION:1H"), {mondayAtNine}},
        {"weeks", eventOf("DTSTART:20240601T070000Z\nDURATION:P2W"), {"A 0601T070000/0615T070000"}},
        {"day", eventOf(wholeDay), {mondayAllDay}},
        {"days", eventOf(wholeDay + "DTEND;VALUE=DATE:20240612"), {"A 0609T220000/0611T220000 day"}},
        {"day with duration", eventOf(wholeDay + "DURATION:P1DT1S"), {"A 0609T220000/0611T220000 day"}},
        {"where the window starts", eventOf("DTSTART:20240609T210000Z\nDTEND:20240609T220000Z"), {}},
        {"without length, there", eventOf("DTSTART:20240609T220000Z"), {"A 0609T220000/0609T220000"}},
        {"after it", eventOf("DTSTART:20240611T220000Z\nDURATION:PT1H"), {}},
        {"far east",
         eventOf("DTSTART;TZID=Pacific/Kiritimati:20240612T115959"),
         {"A 0611T215959/0611T215959"}},
        {"far west",
         eventOf("DTSTART;TZID=Pacific/Pago_Pago:20240609T110000"),
         {"A 0609T220000/0609T220000"}},
    });
}

TEST(Occurrences, seriesRecur)
{
    const auto series = [](const std::string &lines) {
        return eventOf("DTSTART;TZID=Europe/Berlin:20240603T090000\nDURATION:PT1H\n" + lines);
    };
    check({
        {"COUNT reaches", series("RRULE:FREQ=DAILY;COUNT=8"), {monday}},
        {"COUNT is over", series("RRULE:FREQ=DAILY;COUNT=7"), {}},
        {"UNTIL in UTC includes", series("RRULE:FREQ=DAILY;COUNT=9;UNTIL=20240610T070000Z"), {monday}},
        {"UNTIL in UTC excludes", series("RRULE:FREQ=DAILY;UNTIL=20240610T065959Z"), {}},
        {"UNTIL by the clock", series("RRULE:FREQ=DAILY;UNTIL=20240610T090000"), {monday}},
        {"UNTIL a day", series("RRULE:FREQ=DAILY;UNTIL=2024-06-10"), {monday}},
        {"UNTIL and COUNT", series("RRULE:FREQ=DAILY;UNTIL=20240810T070000Z;COUNT=8"), {monday}},
        {"EXDATE in another zone", series("RRULE:FREQ=DAILY\nEXDATE:20240610T070000Z"), {tuesday}},
        {"EXDATE a day", series("RRULE:FREQ=DAILY\nEXDATE;VALUE=DATE:20240610,20240609"), {tuesday}},
        {"RDATE", series("RDATE;TZID=Europe/London:20240611T080000,20240501T080000"), {tuesday}},
        {"RDATE a day", series("RDATE;VALUE=DATE:20240611"), {tuesday}},
        {"RDATE a period",
         series("RDATE;VALUE=PERIOD:20240611T070000Z/PT30M,20240610T100000Z/20240610T103000Z"),
         {"A 0610T100000/0610T103000", "A 0611T070000/0611T073000"}},
        {"whole days",
         eventOf("DTSTART;VALUE=DATE:20240101\nRRULE:FREQ=DAILY\nEXDATE;VALUE=DATE:20240610"),
         {tuesdayAllDay}},
        {"broken rule", eventOf("DTSTART:20240610T070000Z\nRRULE:FREQ=SOMETIMES"), {mondayAtNine}},
        {"another calendar", eventOf("DTSTART:20240610T070000Z\nRRULE:RSCALE=X;FREQ=DAILY"), {mondayAtNine}},
        {"folded rule", series("RRULE:FREQ=DAI\n LY;UNTIL=202\n\t40610"), {monday}},
    });
}

TEST(Occurrences, overridesReplaceTheirOccurrence)
{
    const std::string series =
        eventOf("DTSTART;TZID=Europe/Berlin:20240603T090000\nDURATION:PT1H\nRRULE:FREQ=DAILY");
    const auto override = [](const std::string &id, const std::string &lines) {
        return "BEGIN:VEVENT\nUID:a\nSUMMARY:B\nRECURRENCE-ID" + id + "\nDTSTART" + lines + "\nEND:VEVENT\n";
    };
    const auto with = [&](const std::string &id, const std::string &lines) {
        return series + override(id, lines);
    };
    const std::string id = ":20240610T070000Z", day = ";VALUE=DATE:20240610";
    const std::string atNoon = ":20240610T120000Z", atOne = ":20240610T130000Z";
    const std::string range = ";RANGE=THISANDFUTURE:202406";
    const std::string first = "B 0610T080000/0610T080000", second = "B 0611T080000/0611T080000";
    check({
        {"before its series", override(id, atNoon) + series, {noon, tuesday}},
        {"moved in", with(":20240801T070000Z", atNoon), {monday, noon, tuesday}},
        {"cancelled", with(id, atNoon + "\nSTATUS:CANCELLED"), {tuesday}},
        {"in another zone", with(";TZID=Asia/Tokyo:20240610T160000", atNoon), {noon, tuesday}},
        {"a whole day", with(day, day), {"B 0609T220000/0610T220000 day", tuesday}},
        {"newer of two", with(id, atNoon + "\nSEQUENCE:2") + override(id, atOne), {noon, tuesday}},
        {"later of two", with(id, atNoon + "\nDTSTAMP:20240102") + override(id, atOne), {noon, tuesday}},
        {"without series", override(id, atNoon), {noon}},
        {"of a cancelled series", override(id, atNoon) + eventOf("STATUS:CANCELLED\nDTSTART" + atOne), {}},
        {"of all that follow", with(range + "07T070000Z", ":20240607T080000Z"), {first, second}},
        {"of these, but not the first",
         with(range + "10T070000Z", ":20240610T080000Z") + override(id, atNoon),
         {noon, second}},
        {"of these, later", with(range + "08T070000Z", ":20240611T080000Z"), {second}},
        {"of these, earlier", with(range + "17T070000Z", ":20240611T080000Z"), {monday, tuesday, second}},
        {"of these, cancelled", with(range + "11T070000Z", atNoon + "\nSTATUS:CANCELLED"), {monday}},
    });
}

TEST(Occurrences, theNewestVersionCounts)
{
    const auto version = [](const std::string &uid, const std::string &sequence, const std::string &day) {
        return "BEGIN:VEVENT\nUID:" + uid + "\nSUMMARY:A\nSEQUENCE:" + sequence + "\nDTSTART:" + day +
               "T070000Z\nEND:VEVENT\n";
    };
    check({
        {"newer last", version("a", "1", "20240611") + version("a", "2", "20240610"), {mondayAtNine}},
        {"newer is elsewhere", version("a\\,b", "2", "20200101") + version("a,b", "1", "20240611"), {}},
        {"no UID", version("", "1", "20240610") + version("", "2", "20240610"), {mondayAtNine, mondayAtNine}},
    });
}

TEST(Occurrences, seriesFollowTheClockThroughTimeChanges)
{
    const std::string at = "DTSTART;TZID=Europe/Berlin:20240301T023000\nRRULE:FREQ=DAILY\nDURATION:";
    const std::string days = "DTSTART;VALUE=DATE:20180101\nRRULE:FREQ=DAILY";
    check({{"skipped hour", eventOf(at + "PT1H"), {"A 0331T013000/0331T023000"}},
           {"from a skipped hour",
            eventOf(at + "P1D"),
            {"A 0330T013000/0331T013000", "A 0331T013000/0401T003000"}}},
          windowOf("2024-03-31T03:00:00", "2024-04-01T00:00:00"));
    check({{"repeated hour", eventOf(at + "PT1H"), {"A 1027T003000/1027T013000"}},
           {"day of 25 hours", eventOf(days), {"A 1026T220000/1027T230000 day"}}},
          windowOf("2024-10-27T00:00:00", "2024-10-28T00:00:00"));
}

} // namespace mivora::ical
