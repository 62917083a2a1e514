#pragma once

#include "ICalendar/ProblemList.h"

namespace mivora::ical {

/// One VEVENT, found but not read. The lines are whole and still folded; empty where there is none.
struct EventOutline
{
    /// What stands between BEGIN and END.
    std::string_view text;
    std::string_view start;
    std::string_view end;
    std::string_view duration;
    std::string_view rule;
    std::string_view extraTimes;
    std::string_view recurrenceID;
    std::string_view uid;
    std::string_view sequence;
    std::string_view stamp;
    /// Of the calendar object that it belongs to, as in CalendarOutline::timeZones.
    std::size_t object = 0;
    /// A rule or a list of extra times comes more than once.
    bool isRepeated = false;
};

/// What a piece of iCalendar text consists of. All of it points into the text.
struct CalendarOutline
{
    /// What stands before the first component of the first calendar.
    std::string_view header;
    /// For each calendar object its VTIMEZONEs, without their BEGIN and END. The first is for what stands
    /// before any object.
    std::vector<std::vector<std::string_view>> timeZones{1};
};

/// Told of every complete VEVENT, in order.
class OutlineReader
{
public:
    virtual ~OutlineReader() = default;
    virtual void readEvent(const EventOutline &event) = 0;
};

/// Splits \a text into its components in one pass that looks at the first letters of its lines only. A VEVENT
/// without END is left out, and a problem.
CalendarOutline scanCalendar(std::string_view text, OutlineReader &reader, ProblemList &problems);

} // namespace mivora::ical
