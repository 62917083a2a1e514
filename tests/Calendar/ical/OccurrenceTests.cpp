#include "Calendar/ical/ReadText.h"

#include <gtest/gtest.h>

namespace mivora {

namespace {

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
    const std::vector<std::string> nine{"A 2024-06-10 07:00:00 / 2024-06-10 08:00:00"};
    check({
        {"UTC", eventOf("DTSTART:20240610T070000Z\nDTEND:20240610T080000Z"), nine},
        {"floating", eventOf("DTSTART:20240610T090000\nDTEND:20240610T100000"), nine},
        {"IANA",
         eventOf("DTSTART;TZID=Europe/Helsinki:20240610T100000\nDTEND;TZID=Europe/Berlin:20240610T100000"),
         nine},
        {"IANA link", eventOf("DTSTART;TZID=US/Eastern:20240610T030000\nDURATION:PT1H"), nine},
        {"Windows", eventOf("DTSTART;TZID=W. Europe Standard Time:20240610T090000\nDURATION:PT1H"), nine},
        {"quoted",
         eventOf("DTSTART;X-A=\"a:b;c\";TZID=\"Eastern Standard Time\":20240610T030000\nDURATION:PT1H"),
         nine},
        {"prefixed",
         eventOf("DTSTART;TZID=/freeassociation.sourceforge.net/Tzfile/Europe/"
                 "Berlin:20240610T090000\nDURATION:PT1H"),
         nine},
        {"Outlook's UTC", eventOf("DTSTART;TZID=tzone://Microsoft/Utc:20240610T070000\nDURATION:PT1H"), nine},
        {"UTC wins over TZID", eventOf("DTSTART;TZID=Asia/Tokyo:20240610T070000Z\nDURATION:PT1H"), nine},
        {"unknown is floating", eventOf("DTSTART;TZID=Nowhere:20240610T090000\nDURATION:PT1H"), nine},
        {"lower case",
         "begin:vevent\nsummary:A\ndtstart;tzid=Asia/Tokyo:20240610T160000\nduration:PT1H\nend:vevent", nine},
    });
}

TEST(Occurrences, definedZonesCountOnlyForUnknownNames)
{
    const std::string zone =
        "BEGIN:VTIMEZONE\nTZID:%\nBEGIN:STANDARD\nDTSTART:16011028T030000\nTZOFFSETFROM:+0400\n"
        "TZOFFSETTO:+0300\nRRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\nEND:STANDARD\n"
        "BEGIN:DAYLIGHT\nDTSTART:16010325T020000\nTZOFFSETFROM:+0300\nTZOFFSETTO:+0400\n"
        "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\nEND:DAYLIGHT\nEND:VTIMEZONE\n";
    const auto defined = [&](const std::string &id, const std::string &more = "") {
        std::string text = zone;
        return text.replace(text.find('%'), 1, id + more) +
               eventOf("DTSTART;TZID=" + id + ":20240610T110000\nDURATION:PT1H");
    };
    std::string escaped = defined("\"Rome, Vienna\"");
    escaped.replace(escaped.find("\"Rome, Vienna\""), 14, "Rome\\, Vienna");
    check({
        {"own name", defined("Our Office"), {"A 2024-06-10 07:00:00 / 2024-06-10 08:00:00"}},
        {"escaped name", escaped, {"A 2024-06-10 07:00:00 / 2024-06-10 08:00:00"}},
        {"X-LIC-LOCATION",
         defined("Our Office", "\nX-LIC-LOCATION:Asia/Tokyo"),
         {"A 2024-06-10 02:00:00 / 2024-06-10 03:00:00"}},
        {"wrong definition", defined("Europe/Berlin"), {"A 2024-06-10 09:00:00 / 2024-06-10 10:00:00"}},
    });
    check({{"standard time",
            [&] {
                std::string t = zone;
                return t.replace(t.find('%'), 1, "Z1");
            }() +
                eventOf("DTSTART;TZID=Z1:20241028T110000\nDURATION:PT1H"),
            {"A 2024-10-28 08:00:00 / 2024-10-28 09:00:00"}}},
          windowOf("2024-10-28T00:00:00", "2024-10-29T00:00:00"));
}

TEST(Occurrences, endsAreWhatTheEventSays)
{
    check({
        {"no end", eventOf("DTSTART:20240610T070000Z"), {"A 2024-06-10 07:00:00 / 2024-06-10 07:00:00"}},
        {"end before start",
         eventOf("DTSTART:20240610T070000Z\nDTEND:20240610T060000Z"),
         {"A 2024-06-10 07:00:00 / 2024-06-10 07:00:00"}},
        {"negative duration",
         eventOf("DTSTART:20240610T070000Z\nDURATION:-PT1H"),
         {"A 2024-06-10 07:00:00 / 2024-06-10 07:00:00"}},
        {"weeks",
         eventOf("DTSTART:20240601T070000Z\nDURATION:P2W"),
         {"A 2024-06-01 07:00:00 / 2024-06-15 07:00:00"}},
        {"day", eventOf("DTSTART;VALUE=DATE:20240610"), {"A 2024-06-09 22:00:00 / 2024-06-10 22:00:00 day"}},
        {"days",
         eventOf("DTSTART;VALUE=DATE:20240609\nDTEND;VALUE=DATE:20240611"),
         {"A 2024-06-08 22:00:00 / 2024-06-10 22:00:00 day"}},
        {"day that ends on itself",
         eventOf("DTSTART;VALUE=DATE:20240610\nDTEND;VALUE=DATE:20240610"),
         {"A 2024-06-09 22:00:00 / 2024-06-10 22:00:00 day"}},
        {"day with duration",
         eventOf("DTSTART;VALUE=DATE:20240610\nDURATION:P2D"),
         {"A 2024-06-09 22:00:00 / 2024-06-11 22:00:00 day"}},
        {"broken duration",
         eventOf("DTSTART:20240610T070000Z\nDURATION:1H"),
         {"A 2024-06-10 07:00:00 / 2024-06-10 07:00:00"}},
    });
}

TEST(Occurrences, thoseThatTouchTheWindowBelongToIt)
{
    check({
        {"ends at its start", eventOf("DTSTART:20240609T210000Z\nDTEND:20240609T220000Z"), {}},
        {"ends after its start",
         eventOf("DTSTART:20240609T210000Z\nDTEND:20240609T220001Z"),
         {"A 2024-06-09 21:00:00 / 2024-06-09 22:00:01"}},
        {"starts at its end", eventOf("DTSTART:20240611T220000Z\nDURATION:PT1H"), {}},
        {"no length, at its start",
         eventOf("DTSTART:20240609T220000Z"),
         {"A 2024-06-09 22:00:00 / 2024-06-09 22:00:00"}},
        {"no length, at its end", eventOf("DTSTART:20240611T220000Z"), {}},
        {"around it",
         eventOf("DTSTART:20200101T000000Z\nDTEND:20300101T000000Z"),
         {"A 2020-01-01 00:00:00 / 2030-01-01 00:00:00"}},
        {"far east",
         eventOf("DTSTART;TZID=Pacific/Kiritimati:20240612T115959\nDURATION:PT1S"),
         {"A 2024-06-11 21:59:59 / 2024-06-11 22:00:00"}},
        {"far west",
         eventOf("DTSTART;TZID=Pacific/Pago_Pago:20240609T105959\nDURATION:PT2S"),
         {"A 2024-06-09 21:59:59 / 2024-06-09 22:00:01"}},
    });
}

TEST(Occurrences, seriesRecur)
{
    const std::string hour = "DTSTART;TZID=Europe/Berlin:20240603T090000\nDURATION:PT1H\n";
    const std::string monday = "A 2024-06-10 07:00:00 / 2024-06-10 08:00:00";
    const std::string tuesday = "A 2024-06-11 07:00:00 / 2024-06-11 08:00:00";
    check({
        {"weekly", eventOf(hour + "RRULE:FREQ=WEEKLY"), {monday}},
        {"every other week", eventOf(hour + "RRULE:FREQ=WEEKLY;INTERVAL=2"), {}},
        {"daily", eventOf(hour + "RRULE:FREQ=DAILY"), {monday, tuesday}},
        {"COUNT reaches", eventOf(hour + "RRULE:FREQ=DAILY;COUNT=8"), {monday}},
        {"COUNT is over", eventOf(hour + "RRULE:FREQ=DAILY;COUNT=7"), {}},
        {"COUNT with days", eventOf(hour + "RRULE:FREQ=WEEKLY;BYDAY=MO,TU;COUNT=3"), {monday}},
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
         {"A 2024-06-10 10:00:00 / 2024-06-10 10:30:00", "A 2024-06-11 07:00:00 / 2024-06-11 07:30:00"}},
        {"whole days",
         eventOf("DTSTART;VALUE=DATE:20240101\nRRULE:FREQ=DAILY;BYDAY=TU"),
         {"A 2024-06-10 22:00:00 / 2024-06-11 22:00:00 day"}},
        {"whole days, one left out",
         eventOf("DTSTART;VALUE=DATE:20240101\nRRULE:FREQ=DAILY\nEXDATE;VALUE=DATE:20240610"),
         {"A 2024-06-10 22:00:00 / 2024-06-11 22:00:00 day"}},
        {"broken rule", eventOf("DTSTART:20240611T070000Z\nDURATION:PT1H\nRRULE:FREQ=SOMETIMES"), {tuesday}},
        {"broken UNTIL", eventOf(hour + "RRULE:FREQ=DAILY;UNTIL=tomorrow"), {}},
        {"folded rule", eventOf(hour + "RRULE:FREQ=DAI\n LY;UNTIL=202\n\t40610"), {monday}},
        {"old daily series",
         eventOf("DTSTART:19900101T070000Z\nDURATION:PT1H\nRRULE:FREQ=DAILY"),
         {monday, tuesday}},
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
    const std::string tuesday = "A 2024-06-11 07:00:00 / 2024-06-11 08:00:00";
    check({
        {"moved",
         series + override(id + "DTSTART:20240610T120000Z\nDURATION:PT5M"),
         {"B 2024-06-10 12:00:00 / 2024-06-10 12:05:00", tuesday}},
        {"before its series",
         override(id + "DTSTART:20240610T120000Z\nDURATION:PT5M") + series,
         {"B 2024-06-10 12:00:00 / 2024-06-10 12:05:00", tuesday}},
        {"moved out", series + override(id + "DTSTART:20241224T120000Z"), {tuesday}},
        {"moved in",
         series + override("RECURRENCE-ID:20240801T070000Z\nDTSTART:20240610T120000Z"),
         {"A 2024-06-10 07:00:00 / 2024-06-10 08:00:00", "B 2024-06-10 12:00:00 / 2024-06-10 12:00:00",
          tuesday}},
        {"cancelled", series + override(id + "DTSTART:20240610T070000Z\nSTATUS:CANCELLED"), {tuesday}},
        {"in another zone",
         series +
             override(
                 "RECURRENCE-ID;TZID=Asia/Tokyo:20240610T160000\nDTSTART;TZID=Asia/Tokyo:20240610T170000"),
         {"B 2024-06-10 08:00:00 / 2024-06-10 08:00:00", tuesday}},
        {"a whole day",
         series + override("RECURRENCE-ID;VALUE=DATE:20240610\nDTSTART;VALUE=DATE:20240610"),
         {"B 2024-06-09 22:00:00 / 2024-06-10 22:00:00 day", tuesday}},
        {"newer of two",
         series + override(id + "SEQUENCE:2\nDTSTART:20240610T120000Z") +
             override(id + "SEQUENCE:1\nDTSTART:20240610T130000Z"),
         {"B 2024-06-10 12:00:00 / 2024-06-10 12:00:00", tuesday}},
        {"without series",
         override(id + "DTSTART:20240610T120000Z"),
         {"B 2024-06-10 12:00:00 / 2024-06-10 12:00:00"}},
        {"of a cancelled series",
         override(id + "DTSTART:20240610T120000Z") +
             eventOf("STATUS:CANCELLED\nDTSTART:20240603T070000Z\nRRULE:FREQ=DAILY"),
         {}},
        {"of all that follow",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240607T070000Z\nDTSTART:"
                           "20240607T080000Z\nDURATION:PT5M"),
         {"B 2024-06-10 08:00:00 / 2024-06-10 08:05:00", "B 2024-06-11 08:00:00 / 2024-06-11 08:05:00"}},
        {"of all that follow, by three days",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240608T070000Z\nDTSTART:20240611T070000Z"),
         {"B 2024-06-11 07:00:00 / 2024-06-11 07:00:00"}},
        {"of all that follow, cancelled",
         series + override("RECURRENCE-ID;RANGE=THISANDFUTURE:20240611T070000Z\nDTSTART:"
                           "20240611T070000Z\nSTATUS:CANCELLED"),
         {"A 2024-06-10 07:00:00 / 2024-06-10 08:00:00"}},
    });
}

TEST(Occurrences, theNewestVersionCounts)
{
    const auto version = [](const std::string &sequence, const std::string &day) {
        return eventOf("SEQUENCE:" + sequence + "\nDTSTAMP:20240101T000000Z\nDTSTART:" + day + "T070000Z");
    };
    const std::string monday = "A 2024-06-10 07:00:00 / 2024-06-10 07:00:00";
    check({
        {"newer last", version("1", "20240611") + version("2", "20240610"), {monday}},
        {"newer first", version("2", "20240610") + version("1", "20240611"), {monday}},
        {"newer is elsewhere", version("2", "20200101") + version("1", "20240611"), {}},
        {"cancelled",
         version("1", "20240610") + eventOf("SEQUENCE:2\nSTATUS:CANCELLED\nDTSTART:20240610T070000Z"),
         {}},
        {"no UID, no versions",
         "BEGIN:VEVENT\nSUMMARY:A\nDTSTART:20240610T070000Z\nEND:VEVENT\nBEGIN:VEVENT\nSUMMARY:A\nDTSTART:"
         "20240610T070000Z\nEND:VEVENT",
         {monday, monday}},
    });
}

TEST(Occurrences, seriesFollowTheClockThroughTimeChanges)
{
    const std::string at = "DTSTART;TZID=Europe/Berlin:20240301T023000\nRRULE:FREQ=DAILY\nDURATION:";
    check({{"skipped hour, exact length",
            eventOf(at + "PT1H"),
            {"A 2024-03-30 01:30:00 / 2024-03-30 02:30:00", "A 2024-03-31 01:30:00 / 2024-03-31 02:30:00",
             "A 2024-04-01 00:30:00 / 2024-04-01 01:30:00"}},
           {"calendar days",
            eventOf(at + "P1D"),
            {"A 2024-03-29 01:30:00 / 2024-03-30 01:30:00", "A 2024-03-30 01:30:00 / 2024-03-31 01:30:00",
             "A 2024-03-31 01:30:00 / 2024-04-01 00:30:00", "A 2024-04-01 00:30:00 / 2024-04-02 00:30:00"}}},
          windowOf("2024-03-30T00:00:00", "2024-04-02T00:00:00"));
    check({{"repeated hour", eventOf(at + "PT1H"), {"A 2024-10-27 00:30:00 / 2024-10-27 01:30:00"}},
           {"day of 25 hours",
            eventOf("DTSTART;VALUE=DATE:20241027"),
            {"A 2024-10-26 22:00:00 / 2024-10-27 23:00:00 day"}}},
          windowOf("2024-10-27T00:00:00", "2024-10-28T00:00:00"));
    check({{"no midnight",
            eventOf("DTSTART;VALUE=DATE:20180101\nRRULE:FREQ=DAILY"),
            {"A 2018-11-04 03:00:00 / 2018-11-05 02:00:00 day"}}},
          windowOf("2018-11-04T01:00:00", "2018-11-05T00:00:00", "America/Sao_Paulo"));
    check({{"a day that never was",
            eventOf("DTSTART;TZID=Pacific/Apia:20111229T100000\nRRULE:FREQ=DAILY"),
            {"A 2011-12-30 20:00:00 / 2011-12-30 20:00:00"}}},
          windowOf("2011-12-31T00:00:00", "2012-01-01T00:00:00", "Pacific/Apia"));
}

} // namespace mivora
