#include "ICalendar/RecurrenceRule.h"

#include <algorithm>

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

int daysInMonth(const year_month_day &date)
{
    return int(unsigned((date.year() / date.month() / last).day()));
}

int daysInYear(year y)
{
    return y.is_leap() ? 366 : 365;
}

int dayOfYear(local_days day, year y)
{
    return int((day - local_days(y / 1 / 1)).count()) + 1;
}

/// Whether `set` has position `value` of `length`, counted from the start or (stored above) from the end.
template<std::size_t Size> bool hasPosition(const std::bitset<Size> &set, int value, int length, int highest)
{
    const int fromEnd = highest + length - value + 1;
    return set.test(std::size_t(value)) || set.test(std::size_t(fromEnd));
}

/// Whether the `value`-th day of `length` days is the one of its weekday that `ordinal` names.
bool isOrdinal(int ordinal, int value, int length)
{
    return ordinal == (value - 1) / 7 + 1 || ordinal == -((length - value) / 7 + 1);
}

/// The first day of week 1: the week that has at least four days in the year.
local_days firstWeek(year y, unsigned weekStart)
{
    const local_days fourth(y / 1 / 4);
    return fourth - days((weekday(fourth).c_encoding() + 7 - weekStart) % 7);
}

/// The days that a rule wants, as far as a day by itself can tell. What a rule leaves open is taken from the
/// start of the series.
class DayFilter
{
public:
    DayFilter(const RecurrenceRule &rule, const TimeValue &start) : m_rule(rule)
    {
        if (rule.frequency != Frequency::yearly)
            m_rule.weeks.reset();
        if (rule.frequency == Frequency::monthly ||
            (rule.frequency == Frequency::yearly && rule.months.any()))
            m_ordinals = Ordinals::ofMonth;
        else if (rule.frequency == Frequency::yearly && rule.weeks.none())
            m_ordinals = Ordinals::ofYear;
        if (rule.weekdays.empty() && rule.monthDays.none() && rule.yearDays.none())
            takeFromStart(year_month_day(floor<days>(start.local)));
    }

    bool matches(local_days day) const
    {
        const year_month_day date(day);
        if (m_rule.months.any() && !m_rule.months.test(unsigned(date.month())))
            return false;
        if (m_rule.monthDays.any() &&
            !hasPosition(m_rule.monthDays, int(unsigned(date.day())), daysInMonth(date), 31))
            return false;
        if (m_rule.yearDays.any() &&
            !hasPosition(m_rule.yearDays, dayOfYear(day, date.year()), daysInYear(date.year()), 366))
            return false;
        return (m_rule.weeks.none() || matchesWeek(day)) &&
               (m_rule.weekdays.empty() || matchesWeekday(day, date));
    }

    /// The day on which the rule takes place instead when `day` is the last of its month, and the rule names
    /// a day that this month doesn't have.
    std::optional<local_days> skippedTo(local_days day) const
    {
        const year_month_day date(day);
        const int length = daysInMonth(date);
        if (m_rule.skip == Skip::omit || m_rule.frequency < Frequency::monthly ||
            int(unsigned(date.day())) != length ||
            (m_rule.months.any() && !m_rule.months.test(unsigned(date.month()))))
            return std::nullopt;
        bool isLacking = false;
        for (int wanted = length + 1; wanted <= 31; ++wanted)
            isLacking = isLacking || m_rule.monthDays.test(std::size_t(wanted));
        const local_days target = day + days(m_rule.skip == Skip::forward ? 1 : 0);
        if (!isLacking || (!m_rule.weekdays.empty() && !matchesWeekday(target, year_month_day(target))))
            return std::nullopt;
        return target;
    }

    /// The first day after `day` that can match: whole months without matches are skipped.
    local_days nextCandidate(local_days day) const
    {
        const local_days next = day + days(1);
        const year_month_day date(next);
        if (m_rule.months.none() || m_rule.months.test(unsigned(date.month())))
            return next;
        return local_days((date.year() / date.month() + months(1)) / 1);
    }

private:
    enum class Ordinals { ofMonth, ofYear, ignored };

    void takeFromStart(year_month_day date)
    {
        const unsigned day = weekday(local_days(date)).c_encoding();
        if (m_rule.frequency == Frequency::weekly || m_rule.weeks.any()) {
            m_rule.weekdays.push_back({0, day});
        } else if (m_rule.frequency >= Frequency::monthly) {
            m_rule.monthDays.set(unsigned(date.day()));
            if (m_rule.frequency == Frequency::yearly && m_rule.months.none())
                m_rule.months.set(unsigned(date.month()));
        }
    }

    bool matchesWeekday(local_days day, const year_month_day &date) const
    {
        const unsigned own = weekday(day).c_encoding();
        return std::any_of(
            m_rule.weekdays.begin(), m_rule.weekdays.end(), [&](const RecurrenceRule::Weekday &wanted) {
                if (wanted.day != own)
                    return false;
                if (wanted.ordinal == 0 || m_ordinals == Ordinals::ignored)
                    return true;
                if (m_ordinals == Ordinals::ofMonth)
                    return isOrdinal(wanted.ordinal, int(unsigned(date.day())), daysInMonth(date));
                return isOrdinal(wanted.ordinal, dayOfYear(day, date.year()), daysInYear(date.year()));
            });
    }

    bool matchesWeek(local_days day) const
    {
        // A week belongs to the year that has its fourth day.
        const local_days begin = day - days((weekday(day).c_encoding() + 7 - m_rule.weekStart) % 7);
        const year y = year_month_day(begin + days(3)).year();
        const int week = int((begin - firstWeek(y, m_rule.weekStart)).count() / 7) + 1;
        const int weeks =
            int((firstWeek(y + years(1), m_rule.weekStart) - firstWeek(y, m_rule.weekStart)).count() / 7);
        return hasPosition(m_rule.weeks, week, weeks, 53);
    }

    RecurrenceRule m_rule;
    Ordinals m_ordinals = Ordinals::ignored;
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
