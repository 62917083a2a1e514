#include "ICalendar/ReadText.h"

#include <cstring>
#include <gtest/gtest.h>

namespace mivora::ical {

namespace {

// Events of an hour, of no length and of a day, and what overrides make of the first.
const std::string monday = "A 20240610T070000/20240610T080000";
const std::string tuesday = "A 20240611T070000/20240611T080000";
const std::string mondayAtNine = "A 20240610T070000/20240610T070000";
const std::string mondayAllDay = "A 20240609T220000/20240610T220000 day";
const std::string tuesdayAllDay = "A 20240610T220000/20240611T220000 day";
const std::string noon = "B 20240610T120000/20240610T120000";
const std::string fiveMinutes = "B 20240610T120000/20240610T120500";

struct Case
{
    const char *name;
    std::string text;
    std::vector<std::string> expected;
};

/// Every case is read for 10 to 12 June 2024 in Berlin, two hours ahead of UTC.
void check(const std::vector<Case> &cases,
           const EventWindow &window = windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00"))
{
    for (const Case &one : cases) {
        SCOPED_TRACE(one.name);
        EXPECT_THAT(occurrencesOf(calendarOf(one.text), window), testing::ElementsAreArray(one.expected));
    }
}

} // namespace

TEST(Occurrences, timesAreReadInTheZoneTheyName)
{
    const std::pair<const char *, const char *> starts[] = {
        {"UTC", "DTSTART:20240610T070000Z"},
        {"floating", "DTSTART:20240610T090000"},
        {"IANA, its end in another",
         "DTSTART;TZID=Europe/Helsinki:20240610T100000\nDTEND;TZID=Europe/Berlin:20240610T100000"},
        {"IANA link", "DTSTART;TZID=US/Eastern:20240610T030000"},
        {"Windows", "DTSTART;TZID=W. Europe Standard Time:20240610T090000"},
        {"quoted", "DTSTART;X-A=\"a:b;c\";TZID=\"Eastern Standard Time\":20240610T030000"},
        {"prefixed", "DTSTART;TZID=/freeassociation.sourceforge.net/Tzfile/Europe/Berlin:20240610T090000"},
        {"Outlook's UTC", "DTSTART;TZID=tzone://Microsoft/Utc:20240610T070000"},
        {"UTC wins over TZID", "DTSTART;TZID=Asia/Tokyo:20240610T070000Z"},
        {"unknown is floating", "DTSTART;TZID=Nowhere:20240610T090000"},
        {"lower case", "dtstart;tzid=Asia/Tokyo:20240610T160000"},
    };
    for (const auto &[name, start] : starts) {
        const std::string length = std::strstr(start, "DTEND") ? "" : "\nDURATION:pt1h";
        check({{name, eventOf(start + length), {monday}}});
    }
}

TEST(Occurrences, definedZonesCountOnlyForUnknownNames)
{
    const std::string zone =
        "BEGIN:VTIMEZONE\nTZID:%\nBEGIN:STANDARD\nDTSTART:16011028T030000\nTZOFFSETFROM:+0400\n"
        "TZOFFSETTO:+0300\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\nEND:STANDARD\n"
        "BEGIN:DAYLIGHT\nDTSTART:16010325T020000\nTZOFFSETFROM:+0300\nTZOFFSETTO:+0400\n"
        "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\nEND:DAYLIGHT\nEND:VTIMEZONE\n";
    const auto defined = [&](const std::string &id, const std::string &more = {},
                             const std::string &day = "20240610") {
        std::string text = zone;
        return text.replace(text.find('%'), 1, id + more) +
               eventOf("DTSTART;TZID=" + id + ':' + day + "T110000\nDURATION:PT1H");
    };
    std::string escaped = defined("\"Rome, Vienna\"");
    escaped.replace(escaped.find("\"Rome, Vienna\""), 14, "Rome\\, Vienna");
    check({
        {"own name", defined("Our Office"), {monday}},
        {"escaped name", escaped, {monday}},
        {"X-LIC-LOCATION",
         defined("Our Office", "\nX-LIC-LOCATION:Asia/Tokyo"),
         {"A 20240610T020000/20240610T030000"}},
        {"wrong definition", defined("Europe/Berlin"), {"A 20240610T090000/20240610T100000"}},
        {"abbreviation", defined("EST"), {monday}},
        {"abbreviation alone", eventOf("DTSTART;TZID=EST:20240610T020000\nDURATION:PT1H"), {monday}},
        {"of another calendar",
         defined("Our Office") + "END:VCALENDAR\nBEGIN:VCALENDAR\nBEGIN:VTIMEZONE\nTZID:Our Office\n"
                                 "BEGIN:STANDARD\nDTSTART:20000101T000000\nTZOFFSETFROM:+0000\n"
                                 "TZOFFSETTO:+0000\nEND:STANDARD\nEND:VTIMEZONE\nBEGIN:VEVENT\nUID:b\n"
                                 "SUMMARY:B\nDTSTART;TZID=Our Office:20240610T120000\nEND:VEVENT\n",
         {monday, noon}},
    });
    check({{"standard time", defined("Our Office", "", "20241028"), {"A 20241028T080000/20241028T090000"}}},
          windowOf("2024-10-28T00:00:00", "2024-10-29T00:00:00"));
}

TEST(Occurrences, endsAreWhatTheEventSays)
{
    check({
        {"no end", eventOf("DTSTART:20240610T070000Z"), {mondayAtNine}},
        {"end before start", eventOf("DTSTART:20240610T070000Z\nDTEND:20240610T060000Z"), {mondayAtNine}},
        {"weeks", eventOf("DTSTART:20240601T070000Z\nDURATION:P2W"), {"A 20240601T070000/20240615T070000"}},
        {"day", eventOf("DTSTART;VALUE=DATE:20240610"), {mondayAllDay}},
        {"days",
         eventOf("DTSTART;VALUE=DATE:20240609\nDTEND;VALUE=DATE:20240611"),
         {"A 20240608T220000/20240610T220000 day"}},
        {"day that ends on itself",
         eventOf("DTSTART;VALUE=DATE:20240610\nDTEND;VALUE=DATE:20240610"),
         {mondayAllDay}},
        {"day with duration",
         eventOf("DTSTART;VALUE=DATE:20240610\nDURATION:P2D"),
         {"A 20240609T220000/20240611T220000 day"}},
        {"broken duration", eventOf("DTSTART:20240610T070000Z\nDURATION:1H"), {mondayAtNine}},
    });
}

TEST(Occurrences, thoseThatTouchTheWindowBelongToIt)
{
    check({
        {"ends at its start", eventOf("DTSTART:20240609T210000Z\nDTEND:20240609T220000Z"), {}},
        {"ends after its start",
         eventOf("DTSTART:20240609T210000Z\nDTEND:20240609T220001Z"),
         {"A 20240609T210000/20240609T220001"}},
        {"starts at its end", eventOf("DTSTART:20240611T220000Z\nDURATION:PT1H"), {}},
        {"no length, at its start",
         eventOf("DTSTART:20240609T220000Z"),
         {"A 20240609T220000/20240609T220000"}},
        {"no length, at its end", eventOf("DTSTART:20240611T220000Z"), {}},
        {"around it",
         eventOf("DTSTART:20200101T000000Z\nDTEND:20300101T000000Z"),
         {"A 20200101T000000/20300101T000000"}},
        {"far east",
         eventOf("DTSTART;TZID=Pacific/Kiritimati:20240612T115959\nDURATION:PT1S"),
         {"A 20240611T215959/20240611T220000"}},
        {"far west",
         eventOf("DTSTART;TZID=Pacific/Pago_Pago:20240609T105959\nDURATION:PT2S"),
         {"A 20240609T215959/20240609T220001"}},
    });
}

TEST(Occurrences, seriesRecur)
{
    const std::string hour = "DTSTART;TZID=Europe/Berlin:20240603T090000\nDURATION:PT1H\n";
    check({
        {"daily", eventOf(hour + "RRULE:FREQ=DAILY"), {monday, tuesday}},
        {"COUNT reaches", eventOf(hour + "RRULE:FREQ=DAILY;COUNT=8"), {monday}},
        {"COUNT is over", eventOf(hour + "RRULE:FREQ=DAILY;COUNT=7"), {}},
        {"UNTIL in UTC includes", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=20240610T070000Z"), {monday}},
        {"UNTIL in UTC excludes", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=20240610T065959Z"), {}},
        {"UNTIL by the clock", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=20240610T090000"), {monday}},
        {"UNTIL a day", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=20240610"), {monday}},
        {"EXDATE in another zone", eventOf(hour + "RRULE:FREQ=DAILY\nEXDATE:20240610T070000Z"), {tuesday}},
        {"EXDATE floating", eventOf(hour + "RRULE:FREQ=DAILY\nEXDATE:20240610T090000"), {tuesday}},
        {"EXDATE a day", eventOf(hour + "RRULE:FREQ=DAILY\nEXDATE;VALUE=DATE:20240610,20240609"), {tuesday}},
        {"EXDATE of the start",
         eventOf(
             "DTSTART:20240610T070000Z\nDURATION:PT1H\nRRULE:FREQ=DAILY;COUNT=2\nEXDATE:20240610T070000Z"),
         {tuesday}},
        {"RDATE", eventOf(hour + "RDATE;TZID=Europe/London:20240611T080000,20240501T080000"), {tuesday}},
        {"RDATE twice", eventOf(hour + "RRULE:FREQ=DAILY\nRDATE:20240611T070000Z"), {monday, tuesday}},
        {"RDATE a period",
         eventOf(hour + "RDATE;VALUE=PERIOD:20240611T070000Z/PT30M,20240610T100000Z/20240610T103000Z"),
         {"A 20240610T100000/20240610T103000", "A 20240611T070000/20240611T073000"}},
        {"whole days", eventOf("DTSTART;VALUE=DATE:20240101\nRRULE:FREQ=DAILY;BYDAY=TU"), {tuesdayAllDay}},
        {"whole days, one left out",
         eventOf("DTSTART;VALUE=DATE:20240101\nRRULE:FREQ=DAILY\nEXDATE;VALUE=DATE:20240610"),
         {tuesdayAllDay}},
        {"COUNT and UNTIL", eventOf(hour + "RRULE:FREQ=DAILY;COUNT=9;UNTIL=20240610T070000Z"), {monday}},
        {"UNTIL and COUNT", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=20240810T070000Z;COUNT=8"), {monday}},
        {"broken rule", eventOf("DTSTART:20240611T070000Z\nDURATION:PT1H\nRRULE:FREQ=SOMETIMES"), {tuesday}},
        {"broken UNTIL", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=tomorrow"), {}},
        {"folded rule", eventOf(hour + "RRULE:FREQ=DAI\n LY;UNTIL=202\n\t40610"), {monday}},
    });
}

TEST(Occurrences, overridesReplaceTheirOccurrence)
{
    const std::string series =
        eventOf("DTSTART;TZID=Europe/Berlin:20240603T090000\nDURATION:PT1H\nLOCATION:L\nRRULE:FREQ=DAILY");
    const auto override = [](const std::string &lines) {
        return "BEGIN:VEVENT\nUID:a\nSUMMARY:B\n" + lines + "\nEND:VEVENT\n";
    };
    const std::string id = "RECURRENCE-ID;TZID=Europe/Berlin:20240610T090000\n";
    check({
        {"moved", series + override(id + "DTSTART:20240610T120000Z\nDURATION:PT5M"), {fiveMinutes, tuesday}},
        {"before its series",
         override(id + "DTSTART:20240610T120000Z\nDURATION:PT5M") + series,
         {fiveMinutes, tuesday}},
        {"moved out", series + override(id + "DTSTART:20241224T120000Z"), {tuesday}},
        {"moved in",
         series + override("RECURRENCE-ID:20240801T070000Z\nDTSTART:20240610T120000Z"),
         {monday, noon, tuesday}},
        {"cancelled", series + override(id + "DTSTART:20240610T070000Z\nSTATUS:CANCELLED"), {tuesday}},
        {"in another zone",
         series +
             override(
                 "RECURRENCE-ID;TZID=Asia/Tokyo:20240610T160000\nDTSTART;TZID=Asia/Tokyo:20240610T170000"),
         {"B 20240610T080000/20240610T080000", tuesday}},
        {"a whole day",
         series + override("RECURRENCE-ID;VALUE=DATE:20240610\nDTSTART;VALUE=DATE:20240610"),
         {"B 20240609T220000/20240610T220000 day", tuesday}},
        {"newer of two",
         series + override(id + "SEQUENCE:2\nDTSTART:20240610T120000Z") +
             override(id + "SEQUENCE:1\nDTSTART:20240610T130000Z"),
         {noon, tuesday}},
        {"without series", override(id + "DTSTART:20240610T120000Z"), {noon}},
        {"of a cancelled series",
         override(id + "DTSTART:20240610T120000Z") +
             eventOf("STATUS:CANCELLED\nDTSTART:20240603T070000Z\nRRULE:FREQ=DAILY"),
         {}},
        {"of all that follow",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240607T070000Z\nDTSTART:"
                           "20240607T080000Z\nDURATION:PT5M"),
         {"B 20240610T080000/20240610T080500", "B 20240611T080000/20240611T080500"}},
        {"of all that follow, but not of the first",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240610T070000Z\nDTSTART:20240610T080000Z") +
             override(id + "DTSTART:20240610T120000Z"),
         {noon, "B 20240611T080000/20240611T080000"}},
        {"of all that follow, by three days",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240608T070000Z\nDTSTART:20240611T070000Z"),
         {"B 20240611T070000/20240611T070000"}},
        {"of all that follow, cancelled",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240611T070000Z\nDTSTART:"
                           "20240611T070000Z\nSTATUS:CANCELLED"),
         {monday}},
    });
}

TEST(Occurrences, theNewestVersionCounts)
{
    const auto version = [](const std::string &sequence, const std::string &day) {
        return eventOf("SEQUENCE:" + sequence + "\nDTSTAMP:20240101T000000Z\nDTSTART:" + day + "T070000Z");
    };
    check({
        {"newer last", version("1", "20240611") + version("2", "20240610"), {mondayAtNine}},
        {"newer is elsewhere", version("2", "20200101") + version("1", "20240611"), {}},
        {"UID with other escapes",
         "BEGIN:VEVENT\nUID:a\\,b\nDTSTART:20240610T070000Z\nEND:VEVENT\n"
         "BEGIN:VEVENT\nUID:a,b\nSEQUENCE:1\nDTSTART:20200101T070000Z\nEND:VEVENT\n",
         {}},
        {"cancelled",
         version("1", "20240610") + eventOf("SEQUENCE:2\nSTATUS:CANCELLED\nDTSTART:20240610T070000Z"),
         {}},
        {"no UID, no versions",
         "BEGIN:VEVENT\nSUMMARY:A\nDTSTART:20240610T070000Z\nEND:VEVENT\nBEGIN:VEVENT\nSUMMARY:A\nDTSTART:"
         "20240610T070000Z\nEND:VEVENT",
         {mondayAtNine, mondayAtNine}},
    });
}

TEST(Occurrences, seriesFollowTheClockThroughTimeChanges)
{
    const std::string at = "DTSTART;TZID=Europe/Berlin:20240301T023000\nRRULE:FREQ=DAILY\nDURATION:";
    check({{"skipped hour, exact length",
            eventOf(at + "PT1H"),
            {"A 20240330T013000/20240330T023000", "A 20240331T013000/20240331T023000",
             "A 20240401T003000/20240401T013000"}},
           {"calendar days",
            eventOf(at + "P1D"),
            {"A 20240329T013000/20240330T013000", "A 20240330T013000/20240331T013000",
             "A 20240331T013000/20240401T003000", "A 20240401T003000/20240402T003000"}}},
          windowOf("2024-03-30T00:00:00", "2024-04-02T00:00:00"));
    check({{"repeated hour", eventOf(at + "PT1H"), {"A 20241027T003000/20241027T013000"}},
           {"day of 25 hours",
            eventOf("DTSTART;VALUE=DATE:20241027"),
            {"A 20241026T220000/20241027T230000 day"}}},
          windowOf("2024-10-27T00:00:00", "2024-10-28T00:00:00"));
    check({{"no midnight",
            eventOf("DTSTART;VALUE=DATE:20180101\nRRULE:FREQ=DAILY"),
            {"A 20181104T030000/20181105T020000 day"}}},
          windowOf("2018-11-04T01:00:00", "2018-11-05T00:00:00", "America/Sao_Paulo"));
    check({{"a day that never was",
            eventOf("DTSTART;TZID=Pacific/Apia:20111229T100000\nRRULE:FREQ=DAILY"),
            {"A 20111230T200000/20111230T200000"}}},
          windowOf("2011-12-31T00:00:00", "2012-01-01T00:00:00", "Pacific/Apia"));
}

} // namespace mivora::ical
