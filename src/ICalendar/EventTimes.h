#pragma once

#include "ICalendar/CalendarText.h"
#include "ICalendar/TimeZones.h"

namespace mivora::ical {

/// Collects the problems of one text. Only so many are kept: who has a thousand is told enough by the first.
class ProblemList
{
public:
    explicit ProblemList(std::string_view text) : m_text(text) {}

    /// `at` points into the text.
    void add(const char *at, std::string message);

    /// The problems in the order of their lines, each told once.
    std::vector<TextProblem> numbered();

private:
    std::string_view m_text;
    std::vector<std::pair<const char *, std::string>> m_problems;
};

/// The lines of one VEVENT that say when it happens, and which event it is; still folded, empty where there
/// is none.
struct EventLines
{
    /// What stands between BEGIN and END.
    std::string_view text;
    /// The number of the calendar object that it belongs to, as in `ZoneDefinitions`.
    std::size_t object = 0;
    std::string_view start, end, duration, recurrenceID, uid, sequence, stamp, status;
    std::vector<std::string_view> rules, extraTimes, excludedTimes;

    /// Keeps `line` where it is one of these. Of a property that may come only once the first counts.
    void keep(std::string_view line);
};

/// An interval, in seconds since 1970, outside of which an event has no occurrence; infinite where unknown.
struct DateBounds
{
    double earliest = -std::numeric_limits<double>::infinity();
    double latest = std::numeric_limits<double>::infinity();

    bool mayTouch(const EventWindow &window) const
    {
        return earliest < window.to.time_since_epoch().count() &&
               latest >= window.from.time_since_epoch().count();
    }
};

/// Judges by the digits of its dates when an event can take place, whatever zones these are in.
DateBounds dateBounds(const EventLines &event);

/// `uidHash()` of its UID; 0 when it has none.
std::size_t uidHashOf(const EventLines &event);

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
    /// By these one version of an event is later than another (RFC 5546, 2.1.5).
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

/// What can't be read is a problem and left out.
EventTimes readEventTimes(const EventLines &event, TimeZones &zones, ProblemList &problems);

/// Fills title, attendees, organizer, url, location and notes of `event` from `component` (a VEVENT without
/// its BEGIN and END). An event without URL takes the conference link that servers put elsewhere; one without
/// DESCRIPTION takes X-ALT-DESC. A property without a value is none.
void readEventFields(std::string_view component, Occurrence &event);

} // namespace mivora::ical
