#pragma once

#include "ICalendar/RecurrenceRule.h"

#include <QTimeZone>
#include <map>
#include <memory>

/// Time zones as iCalendar needs them: the step between clock readings and instants.
namespace mivora::ical {

/// A time zone: what to add to UTC at any instant.
class Zone
{
public:
    virtual ~Zone() = default;

    virtual std::chrono::seconds offsetAt(UtcTime time) const = 0;

    /// The instant at which the clock shows `local`. A reading that occurs twice is the first, one that is
    /// skipped is taken with the offset before the gap (RFC 5545, 3.3.5).
    UtcTime toUtc(LocalTime local) const;

    /// What the clock shows at `time`.
    LocalTime toLocal(UtcTime time) const { return LocalTime(time.time_since_epoch() + offsetAt(time)); }
};

/// For each calendar object of a text its VTIMEZONEs, without their BEGIN and END.
using ZoneDefinitions = std::vector<std::vector<std::string_view>>;

/// The time zones of one text, by calendar object and TZID. A name that the system's database knows, also as
/// Windows writes it or with a prefix, means that zone, whatever the object defines by it: definitions in
/// files are often wrong or cut down to one year. Only for other names, and for abbreviations, which mean one
/// thing here and another there, does the VTIMEZONE count.
class TimeZones
{
public:
    /// Floating times are meant in `own`. Definitions are needed for times before `horizon`.
    TimeZones(const QTimeZone &own, const ZoneDefinitions &definitions, LocalTime horizon);

    const Zone &floating() const { return *m_floating; }

    const Zone &utc() const { return *m_utc; }

    /// Nothing when nobody knows `id`.
    const Zone *find(std::size_t object, std::string_view id);

private:
    using Key = std::pair<std::size_t, std::string>;

    std::unique_ptr<Zone> defined(const Key &key);

    std::unique_ptr<Zone> m_floating;
    std::unique_ptr<Zone> m_utc;
    const ZoneDefinitions &m_definitions;
    LocalTime m_horizon;
    WorkBudget m_budget{2'000'000};
    std::map<Key, std::string_view> m_byID;
    std::map<Key, std::unique_ptr<Zone>> m_zones;
};

} // namespace mivora::ical
