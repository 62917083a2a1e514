#pragma once

#include "Calendar/EventStore.h"

#include <QTimeZone>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads iCalendar text (RFC 5545): which events it holds for some wanted days.
namespace mivora {

/// The days that are wanted, and the zone in which floating times and whole days are meant.
struct EventWindow
{
    Timestamp from{};
    Timestamp to{};
    QTimeZone zone;
};

/// A line that could not be understood; what it belongs to is left out.
struct TextProblem
{
    /// Counted from 1.
    std::int64_t line = 0;
    std::string message;
};

/// What a piece of iCalendar text says about its calendar and the wanted days.
struct CalendarText
{
    /// X-WR-CALNAME or NAME (RFC 7986).
    std::optional<std::string> name;
    /// X-APPLE-CALENDAR-COLOR or COLOR (RFC 7986).
    std::optional<Color> color;
    /// X-WR-OWNER: an e-mail address, in lower case.
    std::optional<std::string> owner;
    /// The occurrences that overlap the window. Calendar and current user are not filled in.
    std::vector<StoreEvent> occurrences;
    std::vector<TextProblem> problems;
    /// Every occurrence for any window lies in [earliest, latest]; infinite where a rule has no end. A window
    /// outside of it needs no second reading. earliest > latest when the text has no events at all.
    double earliest = std::numeric_limits<double>::infinity();
    double latest = -std::numeric_limits<double>::infinity();
};

/// Reads \a text for \a window. What cannot matter for the window is ruled out by its dates alone and never
/// parsed. Work is bounded: a rule that would take too long is cut short and reported as a problem.
CalendarText readCalendarText(std::string_view text, const EventWindow &window);

/// The same without the short cut, for comparison: every component is parsed and expanded.
CalendarText readCalendarTextInFull(std::string_view text, const EventWindow &window);

} // namespace mivora
