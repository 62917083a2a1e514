#pragma once

#include "ICalendar/RecurrenceRule.h"
#include "ICalendar/Zone.h"

#include <map>
#include <memory>
#include <string>

namespace mivora::ical {

/// The time zones of one calendar object, by TZID. A name that the system's database knows, also as Windows
/// writes it or with a prefix, means that zone, whatever the object defines by it: definitions in files are
/// often wrong or cut down to one year. Only for other names, and for abbreviations, which mean one thing
/// here and another there, does the VTIMEZONE count.
class ZoneTable
{
public:
    /// \a definitions are the VTIMEZONEs; they are needed for times before \a horizon.
    ZoneTable(const std::vector<std::string_view> &definitions, LocalTime horizon, WorkBudget &budget);

    const Zone &utc() const { return m_utc; }

    /// Nothing when nobody knows \a id.
    const Zone *find(std::string_view id);

private:
    std::unique_ptr<Zone> make(std::string_view id);
    std::unique_ptr<Zone> defined(std::string_view id);

    ListedZone m_utc{std::chrono::seconds(0), {}};
    const std::vector<std::string_view> &m_definitions;
    LocalTime m_horizon;
    WorkBudget &m_budget;
    std::map<std::string, std::string_view, std::less<>> m_byID;
    std::map<std::string, std::unique_ptr<Zone>, std::less<>> m_zones;
};

} // namespace mivora::ical
