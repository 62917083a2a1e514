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

/// Whether \a set has position \a value of \a length, counted from the start or (stored above) from the end.
template<std::size_t Size> bool hasPosition(const std::bitset<Size> &set, int value, int length, int highest)
{
    const int fromEnd = highest + length - value + 1;
    return set.test(std::size_t(value)) || set.test(std::size_t(fromEnd));
}

/// Whether the \a value-th day of \a length days is the one of its weekday that \a ordinal names.
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

DayFilter::DayFilter(const RecurrenceRule &rule, const TimeValue &start)
    : m_frequency(rule.frequency), m_skip(rule.skip), m_weekStart(rule.weekStart), m_months(rule.months),
      m_monthDays(rule.monthDays), m_yearDays(rule.yearDays), m_weeks(rule.weeks), m_weekdays(rule.weekdays)
{
    if (m_frequency != Frequency::yearly)
        m_weeks.reset();
    if (m_frequency == Frequency::monthly || (m_frequency == Frequency::yearly && m_months.any()))
        m_ordinals = Ordinals::ofMonth;
    else if (m_frequency == Frequency::yearly && m_weeks.none())
        m_ordinals = Ordinals::ofYear;
    if (m_weekdays.empty() && m_monthDays.none() && m_yearDays.none())
        takeFromStart(year_month_day(floor<days>(start.local)));
}

void DayFilter::takeFromStart(year_month_day date)
{
    const unsigned day = weekday(local_days(date)).c_encoding();
    if (m_frequency == Frequency::weekly || m_weeks.any()) {
        m_weekdays.push_back({0, day});
    } else if (m_frequency >= Frequency::monthly) {
        m_monthDays.set(unsigned(date.day()));
        if (m_frequency == Frequency::yearly && m_months.none())
            m_months.set(unsigned(date.month()));
    }
}

bool DayFilter::matchesWeekday(local_days day, const year_month_day &date) const
{
    const unsigned own = weekday(day).c_encoding();
    return std::any_of(m_weekdays.begin(), m_weekdays.end(), [&](const RecurrenceRule::Weekday &wanted) {
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
    const local_days begin = day - days((weekday(day).c_encoding() + 7 - m_weekStart) % 7);
    const year y = year_month_day(begin + days(3)).year();
    const int week = int((begin - firstWeek(y, m_weekStart)).count() / 7) + 1;
    const int weeks = int((firstWeek(y + years(1), m_weekStart) - firstWeek(y, m_weekStart)).count() / 7);
    return hasPosition(m_weeks, week, weeks, 53);
}

bool DayFilter::matches(local_days day) const
{
    const year_month_day date(day);
    if (m_months.any() && !m_months.test(unsigned(date.month())))
        return false;
    if (m_monthDays.any() && !hasPosition(m_monthDays, int(unsigned(date.day())), daysInMonth(date), 31))
        return false;
    if (m_yearDays.any() &&
        !hasPosition(m_yearDays, dayOfYear(day, date.year()), daysInYear(date.year()), 366))
        return false;
    return (m_weeks.none() || matchesWeek(day)) && (m_weekdays.empty() || matchesWeekday(day, date));
}

std::optional<local_days> DayFilter::skippedTo(local_days day) const
{
    const year_month_day date(day);
    const int length = daysInMonth(date);
    if (m_skip == Skip::omit || m_frequency < Frequency::monthly || int(unsigned(date.day())) != length ||
        (m_months.any() && !m_months.test(unsigned(date.month()))))
        return std::nullopt;
    bool isLacking = false;
    for (int wanted = length + 1; wanted <= 31; ++wanted)
        isLacking = isLacking || m_monthDays.test(std::size_t(wanted));
    const local_days target = day + days(m_skip == Skip::forward ? 1 : 0);
    if (!isLacking || (!m_weekdays.empty() && !matchesWeekday(target, year_month_day(target))))
        return std::nullopt;
    return target;
}

local_days DayFilter::nextCandidate(local_days day) const
{
    const local_days next = day + days(1);
    const year_month_day date(next);
    if (m_months.none() || m_months.test(unsigned(date.month())))
        return next;
    return local_days((date.year() / date.month() + months(1)) / 1);
}

} // namespace mivora::ical
