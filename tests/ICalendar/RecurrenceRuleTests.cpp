#include "ICalendar/RecurrenceRule.h"

#include <QDateTime>
#include <gmock/gmock.h>
#include <libical/ical.h>
#include <random>
#include <set>

namespace mivora::ical {

using namespace std::chrono;

namespace {

std::string textOf(LocalTime time)
{
    return QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC)
        .toString(QStringLiteral("yyyyMMdd'T'HHmmss"))
        .toStdString();
}

LocalTime timeOf(const std::string &text)
{
    return parseTime(text)->local;
}

std::vector<std::string> expanded(const std::string &text, const std::string &start, LocalSpan span)
{
    std::vector<std::string> times;
    const auto rule = RecurrenceRule::parse(text);
    if (!rule)
        return {"no rule"};
    WorkBudget budget{10'000'000};
    expandRule(
        *rule, *parseTime(start), span, budget, [](LocalTime) { return false; },
        [&](LocalTime time) { times.push_back(textOf(time)); });
    return times;
}

/// What libical makes of the same rule.
std::vector<std::string> expandedByLibical(const std::string &text, const std::string &start, LocalSpan span)
{
    std::vector<std::string> times;
    icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
    icalrecur_iterator *iterator = icalrecur_iterator_new(rule, icaltime_from_string(start.c_str()));
    // Nothing for a rule that never matches.
    if (!iterator)
        return {};
    for (icaltimetype time = icalrecur_iterator_next(iterator); !icaltime_is_null_time(time);
         time = icalrecur_iterator_next(iterator)) {
        const LocalTime local = timeOf(icaltime_as_ical_string(time));
        if (local >= span.to)
            break;
        if (local >= span.from)
            times.push_back(textOf(local));
    }
    icalrecur_iterator_free(iterator);
    return times;
}

} // namespace

TEST(RecurrenceRule, findsTheFirstTimes)
{
    struct Case
    {
        std::string rule, start;
        std::vector<std::string> expected;
    };

    const Case cases[] = {
        {"FREQ=MONTHLY", "20240131T090000", {"20240131T090000", "20240331T090000", "20240531T090000"}},
        {"FREQ=YEARLY", "20240229T090000", {"20240229T090000", "20280229T090000", "20320229T090000"}},
        {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-2",
         "20240101T090000",
         {"20240130T090000", "20240228T090000", "20240328T090000"}},
        {"FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO",
         "19970512T090000",
         {"19970512T090000", "19980511T090000", "19990517T090000"}},
        {"FREQ=YEARLY;BYDAY=20MO",
         "19970519T090000",
         {"19970519T090000", "19980518T090000", "19990517T090000"}},
        {"FREQ=YEARLY;INTERVAL=4;BYMONTH=11;BYDAY=TU;BYMONTHDAY=2,3,4,5,6,7,8",
         "19961105T090000",
         {"19961105T090000", "20001107T090000", "20041102T090000"}},
        {"FREQ=YEARLY;INTERVAL=3;BYYEARDAY=1,-1",
         "19970101T090000",
         {"19970101T090000", "19971231T090000", "20000101T090000"}},
        {"FREQ=HOURLY;INTERVAL=30",
         "20240101T090000",
         {"20240101T090000", "20240102T150000", "20240103T210000"}},
        {"FREQ=MINUTELY;INTERVAL=20;BYHOUR=9",
         "20240101T090000",
         {"20240101T090000", "20240101T092000", "20240101T094000"}},
        {"FREQ=DAILY;BYHOUR=9,10;BYMINUTE=0,30;BYSETPOS=2,-1",
         "20240101T090000",
         {"20240101T093000", "20240101T103000", "20240102T093000"}},
        {"FREQ=DAILY;BYMONTH=2;BYMONTHDAY=30", "20240101T090000", {}},
        {"FREQ=MONTHLY;BYDAY=6MO", "20240101T090000", {}},
        {"RSCALE=HEBREW;FREQ=YEARLY", "20240101T090000", {"no rule"}},
        {"RSCALE=GREGORIAN;FREQ=YEARLY;SKIP=FORWARD",
         "20240229T090000",
         {"20240229T090000", "20250301T090000", "20260301T090000"}},
        {"RSCALE=GREGORIAN;FREQ=MONTHLY;BYMONTHDAY=28,30;BYHOUR=9,10;SKIP=BACKWARD",
         "20250228T090000",
         {"20250228T090000", "20250228T100000", "20250328T090000"}},
        {"RSCALE=GREGORIAN;FREQ=MONTHLY;INTERVAL=3;BYMONTHDAY=1,31;SKIP=FORWARD;COUNT=4",
         "20240131T090000",
         {"20240131T090000", "20240401T090000", "20240501T090000", "20240701T090000"}},
        {" freq = daily ; interval = 9 ;", "20240101T090000", {"20240101T090000", "20240110T090000"}},
        {"FREQ=DAILY;BYDAY=;WKST=;UNTIL=;X-A=1;;BYMONTHDAY=,2,",
         "20240101T090000",
         {"20240102T090000", "20240202T090000"}},
        {"FREQ=DAILY;FREQ=YEARLY;BYDAY=;BYDAY=TU;BYDAY=FR",
         "20240101T090000",
         {"20240102T090000", "20240109T090000"}},
        {"FREQ=DAILY;INTERVAL=0", "20240101T090000", {"no rule"}},
        {"BYDAY=MO", "20240101T090000", {"no rule"}},
        {"FREQ=DAILY;COUNT=x", "20240101T090000", {"no rule"}},
        {"FREQ=DAILY;BYHOUR=25", "20240101T090000", {"no rule"}},
    };
    for (const Case &one : cases) {
        auto times = expanded(one.rule, one.start, {timeOf(one.start), timeOf("20350101")});
        times.resize(std::min<std::size_t>(times.size(),
                                           one.expected.size() < 2 ? times.size() : one.expected.size()));
        EXPECT_EQ(times, one.expected) << one.rule;
    }
}

TEST(RecurrenceRule, agreesWithLibicalOnRandomRules)
{
    std::mt19937 random(7);
    const auto below = [&](int n) { return int(random() % unsigned(n)); };
    const auto list = [&](int low, int high, bool negative) {
        // In order: libical doesn't sort the hours of an hourly rule.
        std::set<int> values;
        for (int i = 0, n = 1 + below(3); i < n; ++i)
            values.insert((low + below(high - low + 1)) * (negative && below(3) == 0 ? -1 : 1));
        std::string text;
        for (const int value : values)
            text += (text.empty() ? "" : ",") + std::to_string(value);
        return text;
    };
    const char *const days[] = {"MO", "TU", "WE", "TH", "FR", "SA", "SU"};
    for (int round = 0; round < 1'000; ++round) {
        const char *const names[] = {"HOURLY", "DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
        // Its hourly rules lose step when BYHOUR is combined with INTERVAL.
        const int frequency = 1 + below(4);
        std::string rule = std::string("FREQ=") + names[frequency];
        if (below(2))
            rule += ";INTERVAL=" + std::to_string(1 + below(4));
        if (below(4) == 0)
            rule += ";COUNT=" + std::to_string(1 + below(60));
        if (below(4) == 0)
            rule += std::string(";WKST=") + days[below(7)];
        if (below(3) == 0)
            rule += ";BYMONTH=" + list(1, 12, false);
        // Its daily and hourly rules miscount days from the end of the month; for days of the month alone,
        // libical takes the month of the start where the RFC means every month.
        const bool hasMonth = rule.find("BYMONTH") != rule.npos;
        if (frequency != 2 && (frequency != 4 || hasMonth) && below(3) == 0)
            rule += ";BYMONTHDAY=" + list(1, 31, frequency >= 3);
        if (below(3) == 0) {
            const std::string ordinal =
                frequency >= 3 && below(2) ? std::to_string(below(2) ? 1 + below(5) : -1 - below(5)) : "";
            const int day = below(5);
            rule += ";BYDAY=" + ordinal + days[day] + "," + ordinal + days[day + 1 + below(2)];
        }
        if (below(6) == 0)
            rule += ";BYHOUR=" + list(0, 23, false);
        if (below(6) == 0)
            rule += ";BYMINUTE=" + list(0, 59, false);
        // A series that doesn't start by its own rule is undefined.
        const std::string near = textOf(timeOf("20200101") + seconds(below(86'400 * 500)));
        const auto matching = expanded(rule, near, {timeOf("20200101"), timeOf("20220101")});
        if (matching.empty())
            continue;
        const std::string start = matching.front();
        const LocalSpan span{timeOf("20220601") + hours(below(5'000)), timeOf("20230801")};
        ASSERT_EQ(expanded(rule, start, span), expandedByLibical(rule, start, span))
            << rule << " from " << start;
    }
}

} // namespace mivora::ical
