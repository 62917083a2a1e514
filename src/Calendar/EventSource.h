#pragma once

#include "Meetings/CalendarInfo.h"
#include "Meetings/Meeting.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace mivora {

/// The user's calendars as the rest of the program sees them. Main thread only.
class EventSource
{
public:
    using ChangeHandler = std::function<void()>;

    virtual ~EventSource() = default;

    /// The current state of the permission, read anew at every call.
    virtual CalendarAuthorization authorization() const = 0;

    /// Whether calendars may be read, and there is none: neither asked for nor withheld.
    virtual bool isNothingToRead() const { return false; }

    /// Asks for full access; `answer` is called later on the main thread with whether it was granted.
    virtual void requestAccess(std::function<void(bool granted)> answer) = 0;

    /// The calendars, sorted by account, then title; none without access.
    virtual std::vector<CalendarInfo> calendars() const = 0;

    /// The meetings that overlap [start, end), sorted by start, then title; none without access.
    /// `calendarIDs` absent means all calendars.
    virtual std::vector<Meeting> meetings(Timestamp start, Timestamp end,
                                          const std::optional<std::set<std::string>> &calendarIDs) = 0;

    /// Called after every change of the calendars or of the permission; replaces the handler set before.
    virtual void setOnChange(ChangeHandler handler) = 0;
};

} // namespace mivora
