#pragma once

#include "ICalendar/CivilTime.h"
#include "Meetings/Meeting.h"

#include <QTimeZone>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

/// Reads iCalendar text (RFC 5545): which events it holds for some wanted days.
namespace mivora::ical {

/// The days that are wanted, and the zone in which floating times and whole days are meant.
struct EventWindow
{
    Timestamp from{};
    Timestamp to{};
    QTimeZone zone;

    friend bool operator==(const EventWindow &, const EventWindow &) = default;
};

/// A line that could not be understood; what it belongs to is left out.
struct TextProblem
{
    /// Counted from 1.
    std::int64_t line = 0;
    std::string message;
};

/// An attendee or the organizer, with two e-mail addresses as `mailAddress()` writes them, either of which
/// may be empty.
struct Attendee
{
    /// The calendar address.
    std::string address;
    /// The EMAIL parameter (RFC 7986, 6.2), for calendar addresses that say nothing.
    std::string email;
    /// PARTSTAT.
    Participation answer = Participation::unknown;
    /// A room or a device, by its CUTYPE.
    bool isResource = false;

    friend bool operator==(const Attendee &, const Attendee &) = default;
};

/// One occurrence of an event: recurrence is expanded, overrides are applied.
struct Occurrence
{
    std::optional<std::string> uid;
    std::optional<std::string> title;
    UtcTime start{};
    UtcTime end{};
    bool isAllDay = false;
    std::vector<Attendee> attendees;
    std::optional<Attendee> organizer;
    /// URL, or the conference link that servers put elsewhere.
    std::optional<std::string> url;
    std::optional<std::string> location;
    std::optional<std::string> notes;

    friend bool operator==(const Occurrence &, const Occurrence &) = default;
};

/// What a piece of iCalendar text says about its calendar and the wanted days.
struct CalendarText
{
    /// X-WR-CALNAME or NAME (RFC 7986).
    std::optional<std::string> name;
    /// X-APPLE-CALENDAR-COLOR where it is a number, or COLOR (RFC 7986), as written.
    std::optional<std::string> color;
    /// X-WR-OWNER, as `mailAddress()` writes it.
    std::optional<std::string> owner;
    /// The occurrences that overlap the window.
    std::vector<Occurrence> occurrences;
    /// `uidHash()` of every VEVENT with a UID, whatever its days, in the order of the text.
    std::vector<std::size_t> uids;
    std::vector<TextProblem> problems;
    /// Every occurrence for any window lies in [earliest, latest]; infinite where a rule has no end. A window
    /// outside of it needs no second reading. earliest > latest when the text has no events at all.
    double earliest = std::numeric_limits<double>::infinity();
    double latest = -std::numeric_limits<double>::infinity();
};

/// Reads `text` for `window`. What cannot matter for the window is ruled out by its dates alone and never
/// parsed. Work is bounded: a rule that would take too long is cut short and reported as a problem.
CalendarText readCalendarText(std::string_view text, const EventWindow &window);

/// The hash by which events are known, of an unescaped UID; never 0.
std::size_t uidHash(std::string_view uid);

/// The e-mail address in `text`, which is one by itself or a "mailto:" with its escapes (RFC 6068): in lower
/// case, without the blanks around it. Empty when there is none.
std::string mailAddress(std::string_view text);

} // namespace mivora::ical
