#pragma once

#include "CalendarEds/DesktopCalendars.h"

#include <libecal/libecal.h>
#include <set>

namespace mivora {

/// The events of \a components, a list of ICalComponent.
std::vector<CalendarObject> readObjects(const GSList *components);

/// The names of \a ids, a list of ECalComponentId.
std::vector<ObjectName> readNames(const GSList *ids);

/// Every TZID in \a components.
std::set<std::string> timeZonesIn(const GSList *components);

/// A query for what touches \a interval, and for everything that recurs or overrides an occurrence.
///
/// A server judges each component by itself: it wouldn't tell that an occurrence was moved out of the
/// interval.
std::string queryFor(const DesktopInterval &interval);

} // namespace mivora
