#pragma once

#include "Calendar/CalendarLoader.h"
#include "CalendarEds/DesktopCalendars.h"

#include <map>
#include <mutex>
#include <set>
#include <unordered_map>

namespace mivora {

/// The text of the desktop's calendars, and its meetings in the loaded days.
class DesktopEvents final : public DesktopCalendarsReader
{
public:
    /// Stands before the identifiers of the desktop's calendars, which are any text.
    static constexpr std::string_view idPrefix = "desktop:";

    /// `addresses` are the user's own, for calendars whose owner is not known. `deliver` is called on the
    /// reader's thread, whenever all that was told belongs together.
    DesktopEvents(EventWindow window, std::vector<std::string> addresses, CalendarLoader::Deliver deliver);

    /// Wants other days; settle() brings them. Can be called on any thread.
    void setWindow(EventWindow window);
    EventWindow window() const;

    void setAccess(DesktopAccess access) override;
    void setAccounts(DesktopAccounts accounts) override;
    void startLoad(const std::string &calendarID) override;
    void finishLoad(const std::string &calendarID) override;
    void putObjects(const std::string &calendarID, std::vector<CalendarObject> objects) override;
    void removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names) override;
    void putTimeZone(const std::string &calendarID, const std::string &id, std::string text) override;
    void settle(bool hasAll) override;
    void report(const std::string &message) override;

private:
    struct Object
    {
        std::string text;
        /// It was there before a load that has yet to tell of it.
        bool isDoubtful = false;
    };

    /// All components with one UID.
    struct Event
    {
        /// By recurrence identifier.
        std::map<std::string, Object> objects;
        Meetings meetings;
    };

    struct Calendar
    {
        DesktopCalendar info;
        /// Who counts as the user.
        std::vector<std::string> addresses;
        std::unordered_map<std::string, Event> events;
        /// VTIMEZONEs by their identifiers.
        std::map<std::string, std::string> timeZones;
        /// The UIDs of events that are to be expanded again.
        std::set<std::string> changed;
    };

    static void markAll(Calendar &calendar);
    void takeWindow();
    Meetings meetings();
    std::vector<CalendarInfo> calendars() const;
    Meetings meetingsOf(const Calendar &calendar, const Event &event);

    std::vector<std::string> m_addresses;
    CalendarLoader::Deliver m_deliver;
    EventWindow m_window;
    mutable std::mutex m_mutex;
    EventWindow m_wantedWindow;
    AuthorizationStatus m_status = AuthorizationStatus::fullAccess;
    bool m_isLoaded = false;
    std::map<std::string, Calendar> m_calendars;
    /// In the order of the accounts.
    std::vector<std::string> m_order;
    /// Those that were logged.
    std::set<std::string> m_problems;
};

} // namespace mivora
