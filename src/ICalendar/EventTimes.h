#pragma once

#include "ICalendar/ProblemList.h"
#include "ICalendar/RecurrenceRule.h"
#include "ICalendar/ZoneTable.h"

namespace mivora::ical {

/// A time as a property gives it.
struct Moment
{
    TimeValue value;
    /// Nothing for whole days and floating times.
    const Zone *zone = nullptr;
};

/// One of the times that RDATE adds to a series, with its own end where it is a period.
struct ExtraTime
{
    Moment start;
    std::optional<Moment> end;
    std::optional<DurationValue> duration;
};

/// Everything in a VEVENT that says when it happens, and which event it is.
struct EventTimes
{
    /// What stands between BEGIN and END.
    std::string_view text;
    std::string uid;
    std::int64_t sequence = 0;
    UtcTime stamp = UtcTime::min();
    bool isCancelled = false;

    std::optional<Moment> start;
    std::optional<Moment> end;
    std::optional<DurationValue> duration;
    std::vector<RecurrenceRule> rules;
    std::vector<ExtraTime> extraTimes;
    std::vector<Moment> excludedTimes;
    std::optional<Moment> recurrenceID;
    /// The RECURRENCE-ID stands for all later occurrences as well.
    bool isThisAndFuture = false;
};

/// The UID in its \a line, without escapes; \a buffer may hold it.
std::string_view uidOf(std::string_view line, std::string &buffer);

/// The value of SEQUENCE; 0 when it is no number.
std::int64_t sequenceOf(std::string_view value);

/// Reads the lines between BEGIN:VEVENT and END:VEVENT. What can't be read is a problem and left out.
EventTimes readEventTimes(std::string_view text, ZoneTable &zones, ProblemList &problems);

} // namespace mivora::ical
