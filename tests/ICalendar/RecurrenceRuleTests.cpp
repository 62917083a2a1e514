#include "ICalendar/RecurrenceRule.h"

#include <QString>
#include <gtest/gtest.h>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Nine o'clock where `text` is a day.
LocalTime timeOf(const std::string &text)
{
    return parseTime(text.size() == 8 ? text + "T090000" : text)->local;
}

/// The times of a rule in `span`, of which only so many are wanted.
std::vector<LocalTime> expanded(const std::string &text, LocalTime start, LocalSpan span,
                                std::size_t most = 1'000'000)
{
    std::vector<LocalTime> times;
    WorkBudget budget{10'000'000};
    expandRule(RecurrenceRule::parse(text).value(), {start}, span, budget, [&](LocalTime time) {
        times.push_back(time);
        return times.size() < most;
    });
    return times;
}

} // namespace

TEST(RecurrenceRule, findsTheFirstTimes)
{
    // A series starts at the first of its times, which are at nine where it isn't said.
    const std::pair<const char *, std::string> cases[] = {
        {"FREQ=MONTHLY", "20240131 20240331 20240531"},
        {"FREQ=YEARLY", "20240229 20280229 20320229"},
        {"FREQ=YEARLY;BYWEEKNO=20", "19970512 19980511 19990517"},
        {"FREQ=YEARLY;BYWEEKNO=-1;WKST=SU", "20241222 20251228 20261227"},
        {"FREQ=YEARLY;BYDAY=20MO", "19970519 19980518 19990517"},
        {"FREQ=YEARLY;BYDAY=-1SU", "20241229 20251228 20261227"},
        {"FREQ=DAILY;INTERVAL=40;BYMONTH=1,3,5", "20240102 20240322 20240501"},
        {"FREQ=DAILY;COUNT=2;INTERVAL=10", "20240101 20240111"},
        {"FREQ=DAILY;BYDAY=2MO;COUNT=2", "20240101 20240108"},
        {"FREQ=DAILY;BYHOUR=8,17;BYMINUTE=0,30;BYSECOND=7",
         "20240101T080007 20240101T083007 20240101T170007"},
        {"FREQ=WEEKLY;BYMONTH=1", "20240123 20240130 20250107"},
        {"FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,SU", "19970805 19970810 19970819"},
        {"FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,SU;WKST=SU", "19970805 19970817 19970819"},
        {"FREQ=MONTHLY;INTERVAL=5;BYMONTHDAY=-1,29", "20240131 20240629 20240630"},
        {"FREQ=MONTHLY;BYDAY=2FR,-1MO", "20240112 20240129 20240209"},
        {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1,1", "20240101 20240131 20240201"},
        {"FREQ=YEARLY;BYMONTH=6,7", "20240601 20240701 20250601"},
        {"FREQ=YEARLY;BYMONTH=3,11;BYDAY=1SU,-1SU", "20240303 20240331 20241103"},
        {"FREQ=YEARLY;INTERVAL=3;BYYEARDAY=-1,60,366", "20231231 20260301 20261231"},
        {"FREQ=YEARLY;BYWEEKNO=53;BYDAY=SU", "20210103 20270103 20330102"},
        {"FREQ=HOURLY;INTERVAL=30", "20240101 20240102T150000 20240103T210000"},
        {"FREQ=MINUTELY;INTERVAL=20;BYHOUR=9", "20240101T092000 20240101T094000 20240102"},
        {"FREQ=SECONDLY;BYMINUTE=5;BYSECOND=9,60", "20240101T090509 20240101T090559 20240101T100509"},
        {"RSCALE=GREGORIAN;FREQ=YEARLY;SKIP=FORWARD", "20240229 20250301 20260301"},
        {"FREQ=MONTHLY;BYMONTHDAY=28,30;BYHOUR=9,10;SKIP=BACKWARD", "20250228 20250228T100000 20250328"},
        {"FREQ=MONTHLY;BYMONTHDAY=1,31;SKIP=FORWARD;COUNT=3", "20240331 20240401 20240501"},
        {"FREQ=MONTHLY;BYMONTHDAY=31;SKIP=FORWARD", "20240331 20240501 20240531"},
        {" freq = daily ; interval = 9 ;", "20240101 20240110 20240119"},
        {"FREQ=DAILY;BYDAY=;WKST=;UNTIL=;X-A=1;;BYMONTHDAY=,2,0,32,-32", "20240102 20240202 20240302"},
        {"FREQ=DAILY;BYDAY=TU,XX,1X;BYDAY=FR;BYMONTH=0,13;BYSETPOS=0", "20240102 20240109 20240116"},
        {"FREQ=DAILY;FREQ=YEARLY;INTERVAL=0;WKST=X;COUNT=0;BYHOUR=-1,24,x", "20240101 20240102 20240103"},
        {"FREQ=MONTHLY;COUNT=99999999999999999999;BYMONTHDAY=-31,+30", "20240101 20240130 20240301"},
    };
    for (const auto &[rule, text] : cases) {
        std::vector<LocalTime> times;
        for (const QString &time : QString::fromStdString(text).split(QLatin1Char(' ')))
            times.push_back(timeOf(time.toStdString()));
        EXPECT_EQ(expanded(rule, times[0], {times[0], timeOf("20350101")}, 3), times) << rule;
        // Also when they are looked for from the last one on, or before it.
        const LocalTime last = times.back();
        EXPECT_EQ(expanded(rule, times[0], {last, timeOf("20350101")}, 1), std::vector{last}) << rule;
        times.pop_back();
        EXPECT_EQ(expanded(rule, times[0], {times[0], last}), times) << rule;
    }
}

} // namespace mivora::ical
