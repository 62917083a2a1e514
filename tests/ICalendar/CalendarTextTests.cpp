#include "ICalendar/ReadText.h"

#include <gtest/gtest.h>

namespace mivora::ical {

namespace {

EventWindow june()
{
    return windowOf("2024-06-10T00:00:00", "2024-06-12T00:00:00");
}

constexpr const char *at = "DTSTART:20240610T070000Z\n";

Occurrence onlyEvent(const std::string &lines)
{
    const CalendarText text = readCalendarText(calendarOf(eventOf(at + lines)), june());
    EXPECT_EQ(text.occurrences.size(), 1u) << lines;
    return text.occurrences.empty() ? Occurrence() : text.occurrences.front();
}

} // namespace

TEST(CalendarText, fieldsAreReadWithoutTheirEscapes)
{
    const Occurrence event =
        onlyEvent("LOCATION:Room 1\\, left\nDESCRIPTION:a\\nb\\;\\\\c \n folded f\n \xC3\xBC\n"
                  "URL:https://x.test/?a=1;b,c\nX-ALT-DESC:not this");
    EXPECT_EQ(event.uid, "a");
    EXPECT_EQ(event.title, "A");
    EXPECT_EQ(event.location, "Room 1, left");
    EXPECT_EQ(event.notes, "a\nb;\\c folded f\xC3\xBC");
    EXPECT_EQ(event.url, "https://x.test/?a=1;b,c");
    const Occurrence bare = onlyEvent("");
    EXPECT_EQ(bare.location, std::nullopt);
    EXPECT_EQ(bare.notes, std::nullopt);
    EXPECT_EQ(bare.url, std::nullopt);
}

TEST(CalendarText, aFoldMaySplitACharacter)
{
    EXPECT_EQ(onlyEvent("LOCATION:f\xC3\r\n \xBCr\r\n").location, "f\xC3\xBCr");
    EXPECT_EQ(onlyEvent(std::string("LOCATION:a\0b", 12)).location, "ab");
    EXPECT_EQ(onlyEvent("LOCATION:" + std::string(1'000'000, 'x')).location->size(), 1'000'000u);
}

TEST(CalendarText, theUrlIsTheConferenceLinkWhereThereIsNone)
{
    const std::string conference = "CONFERENCE;VALUE=URI;FEATURE=AUDIO,VIDEO:https://a.test/1\n";
    const std::pair<std::string, std::optional<std::string>> cases[] = {
        {conference, "https://a.test/1"},
        {"URL:https://u.test\n" + conference, "https://u.test"},
        {"CONFERENCE;VALUE=URI:https://a.test/2\n" + conference, "https://a.test/2"},
        {"CONFERENCE;VALUE=URI;FEATURE=PHONE:https://a.test/3\n" + conference, "https://a.test/1"},
        {"CONFERENCE;VALUE=URI;FEATURE=screen:https://a.test/4\n" + conference, "https://a.test/4"},
        {"CONFERENCE;VALUE=URI;FEATURE=AUDIO:tel:+1-412-555-0123\n" + conference, "https://a.test/1"},
        {"X-GOOGLE-CONFERENCE:https://g.test/a\nX-MICROSOFT-SKYPETEAMSMEETINGURL:https://m.test\n",
         "https://g.test/a"},
        {"X-GOOGLE-CONFERENCE:https://g.test/a\n" + conference, "https://a.test/1"},
        {"X-MICROSOFT-SKYPETEAMSMEETINGURL:https://m.test/l/a?c=%7b%22T%22%3a1%7d\n",
         "https://m.test/l/a?c=%7b%22T%22%3a1%7d"},
        {"X-MICROSOFT-ONLINEMEETINGCONFLINK:conf:sip:a@b.test\n", std::nullopt},
        {"X-GOOGLE-CONFERENCE;VALUE=URI:https://g.test/b\n", "https://g.test/b"},
        {"X-GOOGLE-CONFERENCE;VALUE=TEXT:https://g.test/b\\,c\n", "https://g.test/b,c"},
        {"X-GOOGLE-CONFERENCE:tel:+1\nX-GOOGLE-CONFERENCE:https://g.test/d\n", "https://g.test/d"},
        {"X-MICROSOFT-ONLINEMEETINGCONFLINK:https://m.test/o\n", "https://m.test/o"},
    };
    for (const auto &[lines, url] : cases)
        EXPECT_EQ(onlyEvent(lines).url, url) << lines;
}

TEST(CalendarText, notesAreTheFormattedOnesWhereThereAreNoOthers)
{
    EXPECT_EQ(
        onlyEvent("X-ALT-DESC;FMTTYPE=text/html:<a href=\"https://x.test/?a=1&amp;b=2\">\\nJoin\\, now</a>")
            .notes,
        "<a href=\"https://x.test/?a=1&b=2\">\nJoin, now</a>");
}

TEST(CalendarText, attendeesKeepTheirOrder)
{
    const Occurrence event =
        onlyEvent("ATTENDEE;CN=\"X: Y\";PARTSTAT=DECLINED:MAILTO:Me@X.test\n"
                  "ATTENDEE;EMAIL=You@x.test;PARTSTAT=TENTATIVE:urn:uuid:1\n"
                  "ATTENDEE;EMAIL=me@x.test:mailto:opaque-1@x.test\n"
                  "ATTENDEE:mailto:a%2Bb@x.test\nATTENDEE;PARTSTAT=ACCEPTED:/principals/1\n");
    const std::vector<Attendee> expected{{"me@x.test", "", ParticipantStatus::declined},
                                         {"", "you@x.test", ParticipantStatus::tentative},
                                         {"opaque-1@x.test", "me@x.test", ParticipantStatus::pending},
                                         {"a+b@x.test", "", ParticipantStatus::pending},
                                         {"", "", ParticipantStatus::accepted}};
    EXPECT_EQ(event.attendees, expected);
}

TEST(CalendarText, theHeaderDescribesTheCalendar)
{
    const CalendarText text =
        readCalendarText("\xEF\xBB\xBF"
                         "BEGIN:VCALENDAR\r\nX-WR-CALNAME:Work\\, mine\r\nNAME:Other\r\n"
                         "COLOR:red\r\nX-APPLE-CALENDAR-COLOR:#FF8000FF\r\nX-WR-OWNER:mailto:Me@X.test\r\n"
                         "BEGIN:VEVENT\r\nX-WR-OWNER:no\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n",
                         june());
    EXPECT_EQ(text.name, "Work, mine");
    EXPECT_EQ(text.color, "#FF8000FF");
    EXPECT_EQ(text.owner, "me@x.test");
    const CalendarText bare = readCalendarText(calendarOf(eventOf(at)), june());
    EXPECT_EQ(bare.name, std::nullopt);
    EXPECT_EQ(bare.color, std::nullopt);
    EXPECT_EQ(bare.owner, std::nullopt);
}

TEST(CalendarText, tellsTheVersionOfEveryEvent)
{
    // Far from the window, and therefore not read otherwise.
    const std::string far = "BEGIN:VEVENT\nUID:x\\,y\nSEQUENCE:3\nDTSTAMP:19700101T000100Z\n"
                            "DTSTART:20300101T000000Z\nEND:VEVENT\nBEGIN:VEVENT\nEND:VEVENT\n";
    const std::vector<EventVersion> expected{{uidHash("a")},
                                             {uidHash("x,y"), 3, UtcTime(std::chrono::minutes(1))}};
    EXPECT_EQ(readCalendarText(calendarOf(eventOf(at) + far), june()).versions, expected);
}

TEST(CalendarText, whatIsBrokenCostsItselfAlone)
{
    struct Case
    {
        std::string text;
        std::size_t occurrences;
        std::vector<std::int64_t> lines;
    };

    const std::string good = eventOf("DTSTART:20240610T070000Z");
    const Case cases[] = {
        {"", 0, {1}},
        {"<html>\n<body>404</body>\n", 0, {1}},
        {std::string(1'000'000, '\0'), 0, {1}},
        {calendarOf(good), 1, {}},
        {calendarOf(good) + calendarOf(good), 1, {}},
        {"BEGIN:VCALENDAR\n" + good, 1, {6}},
        {"BEGIN:VCALENDAR\n" + good + "BEGIN:VEVENT\nDTSTART:2024", 1, {7}},
        {calendarOf("BEGIN:VEVENT\nDTSTART:20240610T070000Z\n" + good), 1, {4}},
        {calendarOf(good + "BEGIN:VEVENT\nDTSTART:20240610T070000Z"), 1, {9}},
        {calendarOf(good + "BEGIN:VEVENT\nDTSTART:June\nEND:VEVENT"), 1, {10, 10}},
        {calendarOf(good + "BEGIN:VEVENT\nEND:VEVENT"), 1, {10}},
        {calendarOf("garbage\n\n:\n;;;:::\n" + good), 1, {}},
        {calendarOf("BEGIN:VTODO\nDTSTART:20240610T070000Z\nEND:VTODO\nBEGIN:VFREEBUSY\n" + good), 1, {}},
        {calendarOf("BEGIN:VEVENT\nDTSTART:20240610T070000Z\nBEGIN:VALARM\nDTSTART:x\nDURATION:P9D\nEND:"
                    "VALARM\nEND:VEVENT"),
         1,
         {}},
    };
    for (const Case &one : cases) {
        const CalendarText read = readCalendarText(one.text, june());
        std::vector<std::int64_t> lines;
        for (const TextProblem &problem : read.problems)
            lines.push_back(problem.line);
        EXPECT_EQ(read.occurrences.size(), one.occurrences) << one.text;
        EXPECT_EQ(lines, one.lines) << one.text;
    }
}

TEST(CalendarText, hostileTextTakesLittleTime)
{
    std::string nested;
    for (int i = 0; i < 50'000; ++i)
        nested += "BEGIN:X\n";
    std::string dates = "RDATE:20240610T080000Z";
    for (int i = 0; i < 50'000; ++i)
        dates += ",20240610T080000Z";
    std::string folded = "DESCRIPTION:";
    for (int i = 0; i < 500'000; ++i)
        folded += "x\n ";
    std::string rules;
    for (int i = 0; i < 300; ++i)
        rules += "BEGIN:VEVENT\nUID:" + std::to_string(i) + "\n" + at + "RRULE:FREQ=SECONDLY\nEND:VEVENT\n";
    const std::string texts[] = {
        eventOf(at + std::string("RRULE:FREQ=SECONDLY")),
        eventOf("DTSTART:19700101T000000Z\nRRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30"),
        eventOf("DTSTART:19700101T000000Z\nRRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30;COUNT=3"),
        eventOf("DTSTART:19700101T000000Z\nRRULE:FREQ=MINUTELY;BYSETPOS=9;COUNT=2000000000"),
        eventOf("DTSTART:19700101T000000Z\nRRULE:FREQ=YEARLY;BYSETPOS=300;BYDAY=MO;COUNT=2"),
        eventOf(
            "DTSTART:00000101T000000Z\nRRULE:FREQ=YEARLY;INTERVAL=99999999999999999;COUNT=99999999999999"),
        eventOf("DTSTART:19700101T000000Z\nRRULE:FREQ=DAILY;BYMONTHDAY=" + std::string(1'000'000, '1')),
        eventOf("DTSTART:19700101T000000Z\nDURATION:P99999W\nRRULE:FREQ=SECONDLY"),
        eventOf(at + nested),
        nested,
        eventOf(at + dates),
        eventOf(at + folded),
        eventOf(at + ("DESCRIPTION:" + std::string(4'000'000, 'x'))),
        rules,
    };
    for (const std::string &text : texts) {
        const auto begin = std::chrono::steady_clock::now();
        readCalendarText(calendarOf(text), june());
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        // Far from what it takes, also on a busy machine with sanitizers; unbounded work takes minutes and
        // more.
        EXPECT_LT(taken.count(), 60.0) << text.substr(0, 200);
    }
}

} // namespace mivora::ical
