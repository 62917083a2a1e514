#include "ICalendar/RecurrenceRule.h"

#include <QDateTime>
#include <gmock/gmock.h>
#include <libical/ical.h>
#include <random>
#include <set>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Nine o'clock where `text` is a day.
LocalTime timeOf(const std::string &text)
{
    return parseTime(text.size() == 8 ? text + "T090000" : text)->local;
}

std::string textOf(LocalTime time)
{
    return QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC)
        .toString(QStringLiteral("yyyyMMdd'T'HHmmss"))
        .toStdString();
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

/// What libical makes of the same rule.
std::vector<LocalTime> expandedByLibical(const std::string &text, LocalTime start, LocalSpan span)
{
    std::vector<LocalTime> times;
    const icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
    icalrecur_iterator *iterator = icalrecur_iterator_new(rule, icaltime_from_string(textOf(start).c_str()));
    // There is none for a rule that never matches.
    while (iterator) {
        const icaltimetype time = icalrecur_iterator_next(iterator);
        if (icaltime_is_null_time(time) || timeOf(icaltime_as_ical_string(time)) >= span.to)
            break;
        if (const LocalTime local = timeOf(icaltime_as_ical_string(time)); local >= span.from)
            times.push_back(local);
    }
    icalrecur_iterator_free(iterator);
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
        {"FREQ=HOURLY;INTERVAL=30", "20240101 20240102T150000 20240103T210000"},
        {"FREQ=MINUTELY;INTERVAL=20;BYHOUR=9", "20240101T092000 20240101T094000 20240102"},
        {"FREQ=SECONDLY;BYMINUTE=5;BYSECOND=9,60", "20240101T090509 20240101T090559 20240101T100509"},
        {"RSCALE=GREGORIAN;FREQ=YEARLY;SKIP=FORWARD", "20240229 20250301 20260301"},
        {"FREQ=MONTHLY;BYMONTHDAY=28,30;BYHOUR=9,10;SKIP=BACKWARD", "20250228 20250228T100000 20250328"},
        {"FREQ=MONTHLY;BYMONTHDAY=1,31;SKIP=FORWARD;COUNT=3", "20240331 20240401 20240501"},
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
        // No hourly ones: libical loses step when BYHOUR is combined with INTERVAL.
        const char *const names[] = {"DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
        const int frequency = below(4);
        std::string rule = std::string("FREQ=") + names[frequency];
        const auto has = [&](const char *part) { return rule.find(part) != rule.npos; };
        const auto add = [&](int chance, const std::string &part) {
            rule += below(chance) ? "" : ';' + part;
        };
        add(2, "INTERVAL=" + std::to_string(1 + below(4)));
        add(4, "COUNT=" + std::to_string(1 + below(60)));
        add(4, std::string("WKST=") + days[below(7)]);
        add(3, "BYMONTH=" + list(1, 12, false));
        // Its daily rules miscount days from the end of the month; for days of the month alone, it takes the
        // month of the start where the RFC means every month.
        if (frequency != 1 && (frequency != 3 || has("BYMONTH")))
            add(3, "BYMONTHDAY=" + list(1, 31, frequency >= 2));
        if (frequency == 3 && !has(";BY"))
            add(2, "BYYEARDAY=" + list(1, 366, true));
        const int day = below(5), ordinal = below(2) ? 1 + below(5) : -1 - below(5);
        const std::string number = frequency >= 2 && below(2) ? std::to_string(ordinal) : "";
        if (!has("BYYEARDAY"))
            add(3, "BYDAY=" + number + days[day] + ',' + number + days[day + 1 + below(2)]);
        // It counts the positions of days, not those of times.
        if (frequency == 2 && has("BYDAY") && below(2))
            rule += ";BYSETPOS=" + list(1, 4, true);
        else
            add(4, "BYHOUR=" + list(0, 23, false) + ";BYMINUTE=" + list(0, 59, false));
        // A series that doesn't start by its own rule is undefined.
        const LocalTime near = timeOf("20200101") + std::chrono::seconds(below(86'400 * 500));
        const auto matching = expanded(rule, near, {timeOf("20200101"), timeOf("20220101")}, 1);
        const LocalSpan span{timeOf("20220601") + hours(below(5'000)), timeOf("20230801")};
        if (matching.empty())
            continue;
        ASSERT_EQ(expanded(rule, matching[0], span), expandedByLibical(rule, matching[0], span)) << rule;
    }
}

} // namespace mivora::ical
