#pragma once

#include "CalendarEds/DesktopCalendars.h"

#include <libecal/libecal.h>
#include <set>

namespace mivora {

/// The events of `components`, a list of ICalComponent.
std::vector<CalendarObject> readObjects(const GSList *components);

/// Every TZID in `components`.
std::set<std::string> timeZonesIn(const GSList *components);

/// A query for what touches `interval`, and for everything that recurs or overrides an occurrence.
///
/// A server judges each component by itself: it wouldn't tell that an occurrence was moved out of the
/// interval.
std::string queryFor(const DesktopInterval &interval);

} // namespace mivora
