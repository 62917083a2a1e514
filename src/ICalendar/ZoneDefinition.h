#pragma once

#include "ICalendar/RecurrenceRule.h"
#include "ICalendar/Zone.h"

#include <memory>
#include <string>

/// Time zones that a text defines itself (RFC 5545, 3.6.5).
namespace mivora::ical {

/// The value of the property \a name of a VTIMEZONE; empty when it has none.
std::string zoneProperty(std::string_view definition, std::string_view name);

/// The zone that \a definition describes, for times before \a horizon. Nothing when it describes
/// none.
std::unique_ptr<Zone> definedZone(std::string_view definition, LocalTime horizon, WorkBudget &budget);

} // namespace mivora::ical
