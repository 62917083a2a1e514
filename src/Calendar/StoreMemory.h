#pragma once

#include "Calendar/OccurrenceList.h"
#include "ICalendar/CalendarText.h"

#include <map>
#include <unordered_set>

namespace mivora {

using ical::EventWindow;

/// Occurrences that came and went.
struct EventChanges
{
    StoreEvents removed;
    StoreEvents added;

    bool isEmpty() const { return removed.empty() && added.empty(); }

    void append(EventChanges other);
};

/// Puts the objects of \a old in the place of equal ones in \a events, so that an occurrence that is as
/// before stays the same object. \a changes is given those that are new and those that are left over.
void keepUnchanged(StoreEvents old, StoreEvents &events, EventChanges &changes);

/// What a loader found out in one go.
struct LoaderNews
{
    EventChanges changes;
    /// Only when they differ from the last ones.
    std::optional<std::vector<StoreCalendar>> calendars;
    AuthorizationStatus status = AuthorizationStatus::denied;
    /// Whether there is anything new to see.
    bool isChange = false;
    /// Whether the first load is done.
    bool isLoaded = true;
};

/// The days around \a now that a calendar is loaded for at first: from yesterday on, as far as a day's end
/// and the next midnight need no other load.
EventWindow windowAround(Timestamp now, const QTimeZone &zone);

/// From what a store answers: its calendars and their occurrences in the loaded days.
class StoreMemory
{
public:
    StoreMemory(EventWindow window, AuthorizationStatus status)
        : m_window(std::move(window)), m_status(status)
    {
    }

    AuthorizationStatus status() const { return m_status; }

    const std::vector<StoreCalendar> &calendars() const { return m_calendars; }

    StoreEvents events(Timestamp from, Timestamp to,
                       const std::optional<std::set<std::string>> &calendarIDs) const;

    /// The days that are, or will be, loaded.
    const EventWindow &window() const { return m_window; }

    /// To be called with every interval that is asked for. Returns whether window() is another now, and is to
    /// be loaded.
    bool want(Timestamp from, Timestamp to);

    /// The same for another time zone.
    bool setTimeZone(const QTimeZone &zone);

    /// Takes what a loader found. Returns whether there is anything new to see.
    bool apply(LoaderNews news);

private:
    EventWindow m_window;
    AuthorizationStatus m_status;
    std::vector<StoreCalendar> m_calendars;
    std::map<std::string, OccurrenceList> m_occurrences;
    /// What was asked for since the window was chosen.
    std::optional<std::pair<Timestamp, Timestamp>> m_asked;
};

} // namespace mivora
