#include "ICalendar/DayFilter.h"

#include <algorithm>

namespace mivora::ical {

using namespace std::chrono;

namespace {

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

} // namespace

DayFilter::DayFilter(const RecurrenceRule &rule, const TimeValue &start) : m_rule(rule)
{
    if (rule.frequency != Frequency::yearly)
        m_rule.weeks.reset();
    if (rule.frequency == Frequency::monthly || (rule.frequency == Frequency::yearly && rule.months.any()))
        m_ordinals = Ordinals::ofMonth;
    else if (rule.frequency == Frequency::yearly && rule.weeks.none())
        m_ordinals = Ordinals::ofYear;
    if (rule.weekdays.empty() && rule.monthDays.none() && rule.yearDays.none())
        takeFromStart(year_month_day(floor<days>(start.local)));
}

void DayFilter::takeFromStart(year_month_day date)
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

bool DayFilter::matchesWeekday(local_days day, const year_month_day &date) const
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

bool DayFilter::matchesWeek(local_days day) const
{
    // A week belongs to the year that has its fourth day.
    const local_days begin = day - days((weekday(day).c_encoding() + 7 - m_rule.weekStart) % 7);
    const year y = year_month_day(begin + days(3)).year();
    const int week = int((begin - firstWeek(y, m_rule.weekStart)).count() / 7) + 1;
    const int weeks =
        int((firstWeek(y + years(1), m_rule.weekStart) - firstWeek(y, m_rule.weekStart)).count() / 7);
    return hasPosition(m_rule.weeks, week, weeks, 53);
}

bool DayFilter::matches(local_days day) const
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

std::optional<local_days> DayFilter::skippedTo(local_days day) const
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

local_days DayFilter::nextCandidate(local_days day) const
{
    const local_days next = day + days(1);
    const year_month_day date(next);
    if (m_rule.months.none() || m_rule.months.test(unsigned(date.month())))
        return next;
    return local_days((date.year() / date.month() + months(1)) / 1);
}

} // namespace mivora::ical
