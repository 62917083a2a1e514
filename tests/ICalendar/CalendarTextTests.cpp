#include "ICalendar/ReadText.h"

#include <gtest/gtest.h>

namespace mivora::ical {

namespace {

const EventWindow june = windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00");

constexpr const char *at = "DTSTART:20240610T070000Z\n";

Occurrence onlyEvent(const std::string &lines)
{
    const CalendarText text = readCalendarText(calendarOf(eventOf(at + lines)), june);
    EXPECT_EQ(text.occurrences.size(), 1u) << lines;
    return text.occurrences.empty() ? Occurrence() : text.occurrences.front();
}

} // namespace

TEST(CalendarText, fieldsAreReadWithoutFoldsAndEscapes)
{
    const std::string conference = "CONFERENCE;VALUE=URI;FEATURE=AUDIO,VIDEO:https://a.test/1\n";
    // Location, notes and link.
    const std::pair<std::string, std::vector<std::optional<std::string>>> cases[] = {
        {"", {std::nullopt, std::nullopt, std::nullopt}},
        {"LOCATION:Room 1\\, left\nDESCRIPTION:a\\nb\\;\\\\c \n folded\nX-ALT-DESC:not this\nLOCATION:nor "
         "this",
         {"Room 1, left", "a\nb;\\c folded", std::nullopt}},
        {std::string("LOCATION:f\xC3\r\n \xBCr\0!\r\n", 21), {"f\xC3\xBCr!", std::nullopt, std::nullopt}},
        {"DESCRIPTION:\nX-ALT-DESC;FMTTYPE=text/html:<a href=\"https://x.test/?a=1&amp;b=2\">\\nJoin\\, "
         "now</a>",
         {std::nullopt, "<a href=\"https://x.test/?a=1&b=2\">\nJoin, now</a>", std::nullopt}},
        {"URL:https://x.test/?a=1;b,c\\n\n" + conference, {{}, {}, "https://x.test/?a=1;b,c\\n"}},
        {"CONFERENCE;FEATURE=PHONE:https://a.test/3\n" + conference, {{}, {}, "https://a.test/1"}},
        {"CONFERENCE;FEATURE=AUDIO:tel:+1\nX-GOOGLE-CONFERENCE:https://g.test/a\n" + conference,
         {{}, {}, "https://a.test/1"}},
        {"CONFERENCE:https://a.test/\\,\nURL:", {{}, {}, "https://a.test/\\,"}},
        {"X-MICROSOFT-SKYPETEAMSMEETINGURL:https://m.test\nX-GOOGLE-CONFERENCE:tel:+1\n",
         {{}, {}, "https://m.test"}},
        {"X-MICROSOFT-ONLINEMEETINGCONFLINK:conf:sip:a@b.test\n", {{}, {}, {}}},
        {"X-GOOGLE-CONFERENCE;VALUE=URI:https://g.test/b\\,c\n", {{}, {}, "https://g.test/b\\,c"}},
        {"X-GOOGLE-CONFERENCE:https://g.test/b\\,c\n", {{}, {}, "https://g.test/b,c"}},
    };
    for (const auto &[lines, fields] : cases) {
        const Occurrence event = onlyEvent(lines);
        EXPECT_EQ((std::vector{event.location, event.notes, event.url}), fields) << lines;
        EXPECT_EQ(event.uid, "a");
        EXPECT_EQ(event.title, "A");
    }
}

TEST(CalendarText, attendeesAreKnownByTwoAddresses)
{
    const Occurrence event = onlyEvent(
        "ATTENDEE;CN=\"X: Y\";PARTSTAT=DECLINED:MAILTO:Me@X.test\n"
        "ATTENDEE;EMAIL=You@x.test;PARTSTAT=TENTATIVE:urn:uuid:1\n"
        "ATTENDEE;EMAIL=me@x.test:mailto:opaque-1@x.test\nATTENDEE:\n"
        "ATTENDEE;PARTSTAT=X-A:mailto:a%2Bb@x.test?subject=c\nATTENDEE;PARTSTAT=accepted:/principals/1\n");
    const std::vector<Attendee> expected{{"me@x.test", "", Participation::declined},
                                         {"", "you@x.test", Participation::tentative},
                                         {"opaque-1@x.test", "me@x.test", Participation::unknown},
                                         {"a+b@x.test", "", Participation::unknown},
                                         {"", "", Participation::accepted}};
    EXPECT_EQ(event.attendees, expected);
}

TEST(CalendarText, theHeaderDescribesTheCalendar)
{
    const std::string event = "BEGIN:VEVENT\nX-WR-OWNER:no@x.test\nEND:VEVENT\n";
    const std::string apple = "X-WR-CALNAME:Work\\, mine\nX-APPLE-CALENDAR-COLOR:#FF8000FF\n";
    const std::string standard = "BEGIN:VCALENDAR\nNAME:Other\nCOLOR:red\n";
    const CalendarText both = readCalendarText("\xEF\xBB\xBF" + standard + apple + event, june);
    EXPECT_EQ((std::vector{both.name, both.color}),
              (std::vector<std::optional<std::string>>{"Work, mine", "#FF8000FF"}));
    const CalendarText one =
        readCalendarText(standard + "X-WR-OWNER:mailto:Me@X.test\n" + event + apple, june);
    EXPECT_EQ((std::vector{one.name, one.color, one.owner}),
              (std::vector<std::optional<std::string>>{"Other", "red", "me@x.test"}));
}

TEST(CalendarText, tellsTheIdentifierOfEveryEvent)
{
    // Far from the window, and therefore not read otherwise.
    const std::string far = "BEGIN:VEVENT\nUID:x\\,y\nDTSTART:20300101T000000Z\nEND:VEVENT\n"
                            "BEGIN:VEVENT\nEND:VEVENT\n";
    EXPECT_EQ(readCalendarText(calendarOf(eventOf(at) + far), june).uids,
              (std::vector{uidHash("a"), uidHash("x,y")}));
}

TEST(CalendarText, whatIsBrokenCostsItselfAlone)
{
    const std::string good = eventOf("DTSTART:20240610T070000Z");
    // The lines of the problems; one event is good where there is one.
    const std::pair<std::string, std::vector<std::int64_t>> cases[] = {
        {"<html>\n<body>404</body>\n", {1}},
        {calendarOf(good) + calendarOf(good), {}},
        {"BEGIN:VCALENDAR\n" + good, {6}},
        {"BEGIN:VCALENDAR\n" + good + "BEGIN:VEVENT\nDTSTART:2024", {7}},
        {calendarOf("BEGIN:VEVENT\nDTSTART:20240610T070000Z\n" + good), {4}},
        {calendarOf(good + "BEGIN:VEVENT\nDTSTART:20240610T070000Z"), {9}},
        {calendarOf(good + "BEGIN:VEVENT\nDTSTART:June\nEND:VEVENT"), {10, 10}},
        {calendarOf("garbage\n\n:\n;;;:::\n" + good), {}},
        {calendarOf("BEGIN:VTODO\nDTSTART:20240610T070000Z\nEND:VTODO\nBEGIN:VFREEBUSY\n" + good), {}},
        {calendarOf(
             eventOf("BEGIN:VALARM\nDTSTART:x\nBEGIN:X\nEND:X\nDTEND:x\nEND:VALARM\n" + std::string(at))),
         {}},
    };
    for (const auto &[text, expected] : cases) {
        const CalendarText read = readCalendarText(text, june);
        std::vector<std::int64_t> lines;
        for (const TextProblem &problem : read.problems)
            lines.push_back(problem.line);
        EXPECT_EQ(read.occurrences.size(), text.starts_with("<html>") ? 0u : 1u) << text;
        EXPECT_EQ(lines, expected) << text;
    }
}

TEST(CalendarText, hostileTextTakesLittleTime)
{
    const auto repeated = [](int count, const char *text) {
        return QByteArray(text).repeated(count).toStdString();
    };
    const std::string since1970 = "DTSTART:19700101T000000Z\nRRULE:FREQ=";
    const std::string texts[] = {
        eventOf(since1970 + "SECONDLY;BYMONTH=2;BYMONTHDAY=30;COUNT=3"),
        eventOf(since1970 + "MINUTELY;BYSETPOS=9;COUNT=2000000000"),
        eventOf(since1970 + "YEARLY;INTERVAL=99999999999999999;COUNT=99999999999999"),
        eventOf(since1970 + "SECONDLY\nDURATION:P99999W"),
        eventOf(at + repeated(50'000, "BEGIN:X\n")),
        eventOf(at + ("RDATE:20240610T080000Z" + repeated(50'000, ",20240610T080000Z"))),
        eventOf(at + ("DESCRIPTION:" + repeated(500'000, "x\n "))),
        repeated(300, "BEGIN:VEVENT\nDTSTART:20240610T070000Z\nRRULE:FREQ=SECONDLY\nEND:VEVENT\n"),
    };
    // Unbounded work takes longer than the whole program may.
    for (const std::string &text : texts)
        EXPECT_LT(readCalendarText(calendarOf(text), june).occurrences.size(), 500'000u);
}

} // namespace mivora::ical
