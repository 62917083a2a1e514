#pragma once

#include "Calendar/EventStore.h"
#include "ICalendar/CalendarText.h"

#include <QLoggingCategory>

namespace mivora {

using ical::EventWindow;

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

/// Meetings that came and went.
struct MeetingChanges
{
    Meetings removed{};
    Meetings added{};
};

/// Puts the objects of `old` in the place of equal ones in `meetings`, so that a meeting that is as before
/// stays the same object. `changes` is given those that are new and those that are left over.
void keepUnchanged(Meetings old, Meetings &meetings, MeetingChanges &changes);

/// Makes a meeting of an occurrence in the calendar `calendarID`. An attendee with one of `ownAddresses`, as
/// `ical::mailAddress()` writes them, is the user.
std::shared_ptr<const Meeting> meetingOf(ical::Occurrence occurrence, const std::string &calendarID,
                                         const std::vector<std::string> &ownAddresses);

/// What a loader found out in one go.
struct StoreUpdate
{
    MeetingChanges changes{};
    /// Only when they differ from the last ones.
    std::optional<std::vector<CalendarInfo>> calendars{};
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
