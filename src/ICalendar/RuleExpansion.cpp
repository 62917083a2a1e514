#include "ICalendar/DayFilter.h"

#include <algorithm>
#include <functional>

namespace mivora::ical {

using namespace std::chrono;

namespace {

/// Later than any year that iCalendar can write.
constexpr int lastYear = 20'000;
constexpr seconds longestStep = days(lastYear * 366);

constexpr seconds unitOf(Frequency frequency)
{
    switch (frequency) {
    case Frequency::secondly:
        return seconds(1);
    case Frequency::minutely:
        return minutes(1);
    case Frequency::hourly:
        return hours(1);
    case Frequency::daily:
        return days(1);
    case Frequency::weekly:
        return weeks(1);
    default:
        return seconds(0);
    }
}

/// From one period to the next, for frequencies up to weeks.
seconds stepOf(Frequency frequency, std::int64_t interval)
{
    return std::min(unitOf(frequency) * interval, longestStep);
}

std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor)
{
    return dividend / divisor - (dividend % divisor < 0);
}

/// The periods of a rule: the years, months … seconds that its frequency and interval name, numbered from the
/// one in which the series starts.
class Periods
{
public:
    Periods(const RecurrenceRule &rule, LocalTime start)
        : m_frequency(rule.frequency), m_interval(rule.interval)
    {
        const year_month_day date(floor<days>(start));
        m_firstMonth = std::int64_t(int(date.year())) * 12;
        if (m_frequency == Frequency::monthly)
            m_firstMonth += unsigned(date.month()) - 1;
        if (m_frequency == Frequency::weekly) {
            const local_days day = floor<days>(start);
            m_first = day - days((weekday(day).c_encoding() + 7 - rule.weekStart) % 7);
        } else if (!byMonths()) {
            m_first = start - (start.time_since_epoch() % unitOf(m_frequency) + unitOf(m_frequency)) %
                                  unitOf(m_frequency);
        }
    }

    LocalTime begin(std::int64_t index) const
    {
        if (!byMonths())
            return m_first + stepOf(m_frequency, m_interval) * index;
        return monthStart(m_firstMonth + index * monthsBetween());
    }

    /// Where the period ends; the next one that counts may begin later.
    LocalTime end(std::int64_t index) const
    {
        if (!byMonths())
            return begin(index) + unitOf(m_frequency);
        return monthStart(m_firstMonth + index * monthsBetween() +
                          (m_frequency == Frequency::yearly ? 12 : 1));
    }

    /// The number of the last period that begins at or before `time`.
    std::int64_t indexOf(LocalTime time) const
    {
        if (!byMonths())
            return floorDivide((time - m_first).count(), stepOf(m_frequency, m_interval).count());
        const year_month_day date(floor<days>(time));
        const std::int64_t month = std::int64_t(int(date.year())) * 12 + unsigned(date.month()) - 1;
        return floorDivide(month - m_firstMonth, monthsBetween());
    }

private:
    bool byMonths() const { return m_frequency >= Frequency::monthly; }

    std::int64_t monthsBetween() const { return m_interval * (m_frequency == Frequency::yearly ? 12 : 1); }

    static LocalTime monthStart(std::int64_t month)
    {
        if (month > lastYear * 12)
            return local_days(year(lastYear) / December / last);
        return local_days(year(int(floorDivide(month, 12))) / int(month - floorDivide(month, 12) * 12 + 1) /
                          1);
    }

    Frequency m_frequency;
    std::int64_t m_interval;
    std::int64_t m_firstMonth = 0;
    LocalTime m_first{};
};

template<std::size_t Size>
std::vector<seconds> valuesOf(const std::bitset<Size> &set, seconds unit, std::int64_t ofStart)
{
    if (set.none())
        return {unit * ofStart};
    std::vector<seconds> values;
    for (std::size_t i = 0; i < Size; ++i)
        if (set.test(i))
            values.push_back(unit * std::int64_t(i));
    return values;
}

/// The times of day, or below a frequency of days the times of the period, that a rule produces. Units that
/// the frequency counts itself come with the period.
std::vector<seconds> timesOf(const RecurrenceRule &rule, const TimeValue &start)
{
    if (start.isDate)
        return {0s};
    const seconds clock = start.local - floor<days>(start.local);
    std::vector<seconds> hours{0s}, minutes{0s}, ofMinute{0s}, times;
    if (rule.frequency > Frequency::hourly)
        hours = valuesOf(rule.hours, 1h, clock / 1h);
    if (rule.frequency > Frequency::minutely)
        minutes = valuesOf(rule.minutes, 1min, clock / 1min % 60);
    if (rule.frequency > Frequency::secondly)
        ofMinute = valuesOf(rule.seconds, 1s, clock / 1s % 60);
    for (const seconds hour : hours)
        for (const seconds minute : minutes)
            for (const seconds second : ofMinute)
                times.push_back(hour + minute + second);
    return times;
}

/// Whether the hour, minute and second that a period stands for are among those that the rule wants.
bool wantsClock(const RecurrenceRule &rule, seconds clock)
{
    const auto wants = [](const auto &set, std::int64_t value) {
        return set.none() || set.test(std::size_t(value));
    };
    return (rule.frequency > Frequency::hourly || wants(rule.hours, clock / 1h)) &&
           (rule.frequency > Frequency::minutely || wants(rule.minutes, clock / 1min % 60)) &&
           (rule.frequency > Frequency::secondly || wants(rule.seconds, clock / 1s % 60));
}

/// Keeps the positions that BYSETPOS names.
void choosePositions(std::vector<LocalTime> &times, const std::vector<int> &positions)
{
    if (positions.empty())
        return;
    std::vector<LocalTime> chosen;
    const auto size = int(times.size());
    for (const int position : positions) {
        const int index = position > 0 ? position - 1 : size + position;
        if (index >= 0 && index < size)
            chosen.push_back(times[std::size_t(index)]);
    }
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    times = std::move(chosen);
}

/// One expansion.
class RuleWalk
{
public:
    RuleWalk(const RecurrenceRule &rule, const TimeValue &start, WorkBudget &budget)
        : m_rule(rule), m_start(start.local), m_periods(rule, start.local), m_times(timesOf(rule, start)),
          m_days(rule, start), m_budget(budget)
    {
    }

    Expansion run(LocalSpan span, const std::function<bool(LocalTime)> &take)
    {
        std::int64_t counted = 0;
        LocalTime last = LocalTime::min();
        std::int64_t index = m_rule.count ? 0 : std::max<std::int64_t>(0, m_periods.indexOf(span.from) - 1);
        for (; m_periods.begin(index) < span.to; ++index) {
            if (!collect(index))
                return Expansion::cutShort;
            for (const LocalTime time : m_found) {
                // A day that was skipped to may also be one of the next period's own.
                if (time < m_start || time <= last)
                    continue;
                last = time;
                if (time >= span.to || (m_rule.count && ++counted > *m_rule.count) ||
                    (time >= span.from && !take(time)))
                    return Expansion::complete;
            }
        }
        return Expansion::complete;
    }

private:
    /// Puts the times of the period `index` into m_found; false when that is too much work.
    bool collect(std::int64_t index)
    {
        m_found.clear();
        const LocalTime begin = m_periods.begin(index);
        if (m_rule.frequency < Frequency::daily) {
            const local_days day = floor<days>(begin);
            if (!m_budget.spend(1))
                return false;
            if (wantsClock(m_rule, begin - day) && wantsDay(day) && !addTimes(begin))
                return false;
        } else if (!collectDays(floor<days>(begin), floor<days>(m_periods.end(index)))) {
            return false;
        }
        choosePositions(m_found, m_rule.positions);
        return true;
    }

    bool collectDays(local_days day, local_days end)
    {
        for (; day < end; day = m_days.nextCandidate(day)) {
            if (!m_budget.spend(1))
                return false;
            if (m_days.matches(day) && !addTimes(day))
                return false;
            if (const auto other = m_days.skippedTo(day); other && !addTimes(*other))
                return false;
        }
        if (m_rule.skip != Skip::omit) {
            std::sort(m_found.begin(), m_found.end());
            m_found.erase(std::unique(m_found.begin(), m_found.end()), m_found.end());
        }
        return true;
    }

    bool addTimes(LocalTime base)
    {
        for (const seconds time : m_times)
            m_found.push_back(base + time);
        return m_budget.spend(std::int64_t(m_times.size()));
    }

    bool wantsDay(local_days day)
    {
        if (day != m_lastDay) {
            m_lastDay = day;
            m_lastDayMatches = m_days.matches(day);
        }
        return m_lastDayMatches;
    }

    const RecurrenceRule &m_rule;
    LocalTime m_start;
    Periods m_periods;
    std::vector<seconds> m_times;
    DayFilter m_days;
    WorkBudget &m_budget;
    std::vector<LocalTime> m_found;
    local_days m_lastDay = local_days::max();
    bool m_lastDayMatches = false;
};

} // namespace

Expansion expandRule(const RecurrenceRule &rule, const TimeValue &start, LocalSpan span, WorkBudget &budget,
                     const std::function<bool(LocalTime)> &take)
{
    if (!rule.count || rule.frequency > Frequency::weekly || !rule.weekdays.empty() ||
        !rule.namesOnlyWeekdays())
        return RuleWalk(rule, start, budget).run(span, take);
    // The last time is known without counting up to it.
    RecurrenceRule endless = rule;
    endless.count.reset();
    const seconds step = stepOf(rule.frequency, rule.interval);
    const LocalTime last = start.local + step * std::min(*rule.count - 1, longestStep / step);
    return RuleWalk(endless, start, budget).run({span.from, std::min(span.to, last + 1s)}, take);
}

} // namespace mivora::ical
