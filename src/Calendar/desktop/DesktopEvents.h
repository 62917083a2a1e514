#pragma once

#include "Calendar/StoreMemory.h"
#include "Calendar/desktop/DesktopCalendars.h"

#include <functional>
#include <map>
#include <set>
#include <unordered_map>

namespace mivora {

/// The text of the desktop's calendars, and its occurrences in the loaded days.
class DesktopEvents
{
public:
    /// Called with what can't be understood: the calendar's title and the problem.
    using Report = std::function<void(const std::string &message)>;

    /// \a addresses are the user's own, for calendars whose owner is not known.
    DesktopEvents(EventWindow window, std::vector<std::string> addresses, Report report);

    /// Takes in and drops calendars.
    void setAccounts(DesktopAccounts accounts);

    /// Everything that is there is doubtful until it is put again.
    void startLoad(const std::string &calendarID);
    /// What is still doubtful is gone.
    void finishLoad(const std::string &calendarID);

    void put(const std::string &calendarID, std::vector<CalendarObject> objects);
    void remove(const std::string &calendarID, const std::vector<ObjectName> &names);
    void putTimeZone(const std::string &calendarID, const std::string &id, std::string text);
    void setWindow(EventWindow window);

    /// Expands what is not what it was at the last call, and nothing else.
    EventChanges update();

    std::vector<StoreCalendar> calendars() const;

private:
    struct Object
    {
        std::string text;
        bool isDoubtful = false;
    };

    /// All components with one UID.
    struct Event
    {
        /// By recurrence identifier.
        std::map<std::string, Object> objects;
        StoreEvents occurrences;
    };

    /// What an event has to be expanded again for.
    enum class Reason { newContext, newText };

    struct Calendar
    {
        DesktopCalendar info;
        /// Who counts as the user.
        std::vector<std::string> addresses;
        std::unordered_map<std::string, Event> events;
        /// VTIMEZONEs by their identifiers.
        std::map<std::string, std::string> timeZones;
        /// By UID.
        std::map<std::string, Reason> changed;
    };

    Calendar *find(const std::string &id);
    static void markAll(Calendar &calendar);
    static void put(Calendar &calendar, CalendarObject object);
    static void remove(Calendar &calendar, const ObjectName &name);
    void drop(Calendar &calendar);
    void expand(Calendar &calendar, const std::string &uid, Reason reason, EventChanges &changes);
    StoreEvents occurrencesOf(const Calendar &calendar, const Event &event, Reason reason);
    void reportProblems(const Calendar &calendar, const std::vector<ical::TextProblem> &problems) const;

    EventWindow m_window;
    std::vector<std::string> m_addresses;
    Report m_report;
    std::map<std::string, Calendar> m_calendars;
    /// In the order of the accounts.
    std::vector<std::string> m_order;
    EventChanges m_dropped;
};

} // namespace mivora
