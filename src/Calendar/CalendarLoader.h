#pragma once

#include "ICalendar/CalendarText.h"
#include "Meetings/CalendarInfo.h"

#include <QLoggingCategory>
#include <functional>
#include <memory>

namespace mivora {

using ical::EventWindow;

/// What the platform says about the permission to read calendars.
enum class AuthorizationStatus {
    notDetermined = 0,
    restricted = 1,
    denied = 2,
    fullAccess = 3,
    writeOnly = 4
};

/// Meetings are shared and never change: an edited event is a new object.
using Meetings = std::vector<std::shared_ptr<const Meeting>>;

/// "mivora.calendar": what a person has to know about calendars that can't be read.
Q_DECLARE_LOGGING_CATEGORY(calendarLog)

/// `text` for a log: on one line, and cut when it is long.
std::string printable(std::string_view text);

/// COLOR holds a name of CSS 3 (RFC 7986, 5.9), though some programs write a hexadecimal form. Calendar
/// programs of the desktop also write the functional one, "rgb(53,132,228)".
std::optional<Color> colorFrom(const std::string &text);

/// The days around `now` that a calendar is loaded for at first: from yesterday on, as far as a day's end and
/// the next midnight need no other load.
EventWindow windowAround(Timestamp now, const QTimeZone &zone);

/// Whether the time from `start` to `end` overlaps [from, to); without length it has to lie inside.
bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to);

/// Makes a meeting of an occurrence in the calendar `calendarID`. An attendee with one of `ownAddresses`, as
/// `ical::mailAddress()` writes them, is the user.
std::shared_ptr<const Meeting> meetingOf(ical::Occurrence occurrence, const std::string &calendarID,
                                         const std::vector<std::string> &ownAddresses);

/// All that a loader knows.
struct StoreUpdate
{
    /// Those of the loaded days, in any order, without the colours of their calendars.
    Meetings meetings{};
    /// Each with an identifier that stays between starts.
    std::vector<CalendarInfo> calendars{};
    AuthorizationStatus status = AuthorizationStatus::denied;
    /// Whether the first load is done.
    bool isLoaded = true;
};

/// Reads one kind of calendars for the store, on threads of its own. Its functions don't block.
class CalendarLoader
{
public:
    /// Can be called on any thread, also when the loader is gone.
    using Deliver = std::function<void(StoreUpdate update)>;

    /// Stops the loading, without waiting for what hangs.
    virtual ~CalendarLoader() = default;

    /// Begins to load the days of `window`, and to follow their changes. To be called once.
    virtual void start(const EventWindow &window, Deliver deliver) = 0;

    /// Loads other days.
    virtual void setWindow(const EventWindow &window) = 0;
};

} // namespace mivora
