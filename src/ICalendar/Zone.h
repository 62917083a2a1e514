#pragma once

#include "ICalendar/CivilTime.h"

#include <QTimeZone>
#include <vector>

/// Time zones as iCalendar needs them: the step between clock readings and instants.
namespace mivora::ical {

/// A time zone: what to add to UTC at any instant.
class Zone
{
public:
    virtual ~Zone() = default;

    virtual std::chrono::seconds offsetAt(UtcTime time) const = 0;

    /// The instant at which the clock shows \a local. A reading that occurs twice is the first, one that is
    /// skipped is taken with the offset before the gap (RFC 5545, 3.3.5).
    UtcTime toUtc(LocalTime local) const;

    /// What the clock shows at \a time.
    LocalTime toLocal(UtcTime time) const { return LocalTime(time.time_since_epoch() + offsetAt(time)); }
};

/// A zone of the system's database.
class SystemZone final : public Zone
{
public:
    explicit SystemZone(QTimeZone zone) : m_zone(std::move(zone)) {}

    std::chrono::seconds offsetAt(UtcTime time) const override;

private:
    QTimeZone m_zone;
};

/// A zone given by the list of its changes.
class ListedZone final : public Zone
{
public:
    struct Change
    {
        UtcTime at{};
        std::chrono::seconds offset{};
    };

    /// \a changes in order of time; \a first is in force before all of them.
    ListedZone(std::chrono::seconds first, std::vector<Change> changes)
        : m_first(first), m_changes(std::move(changes))
    {
    }

    std::chrono::seconds offsetAt(UtcTime time) const override;

private:
    std::chrono::seconds m_first;
    std::vector<Change> m_changes;
};

} // namespace mivora::ical
