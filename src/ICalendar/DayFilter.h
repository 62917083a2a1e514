#pragma once

#include "ICalendar/RecurrenceRule.h"

namespace mivora::ical {

/// The days that a rule wants, as far as a day by itself can tell. What a rule leaves open is taken from the
/// start of the series.
class DayFilter
{
public:
    DayFilter(const RecurrenceRule &rule, const TimeValue &start);

    bool matches(std::chrono::local_days day) const;

    /// The day on which the rule takes place instead when \a day is the last of its month, and the rule names
    /// a day that this month doesn't have.
    std::optional<std::chrono::local_days> skippedTo(std::chrono::local_days day) const;

    /// The first day after \a day that can match: whole months without matches are skipped.
    std::chrono::local_days nextCandidate(std::chrono::local_days day) const;

private:
    enum class Ordinals { ofMonth, ofYear, ignored };

    void takeFromStart(std::chrono::year_month_day date);
    bool matchesWeekday(std::chrono::local_days day, const std::chrono::year_month_day &date) const;
    bool matchesWeek(std::chrono::local_days day) const;

    Frequency m_frequency;
    Ordinals m_ordinals = Ordinals::ignored;
    Skip m_skip;
    unsigned m_weekStart;
    std::bitset<13> m_months;
    std::bitset<64> m_monthDays;
    std::bitset<734> m_yearDays;
    std::bitset<108> m_weeks;
    std::vector<RecurrenceRule::Weekday> m_weekdays;
};

} // namespace mivora::ical
