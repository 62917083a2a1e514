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

    /// The day on which the rule takes place instead when `day` is the last of its month, and the rule names
    /// a day that this month doesn't have.
    std::optional<std::chrono::local_days> skippedTo(std::chrono::local_days day) const;

    /// The first day after `day` that can match: whole months without matches are skipped.
    std::chrono::local_days nextCandidate(std::chrono::local_days day) const;

private:
    enum class Ordinals { ofMonth, ofYear, ignored };

    void takeFromStart(std::chrono::year_month_day date);
    bool matchesWeekday(std::chrono::local_days day, const std::chrono::year_month_day &date) const;
    bool matchesWeek(std::chrono::local_days day) const;

    RecurrenceRule m_rule;
    Ordinals m_ordinals = Ordinals::ignored;
};

} // namespace mivora::ical
