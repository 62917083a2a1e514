#pragma once

#include "CalendarEds/DesktopCalendars.h"

#include <libedataserver/libedataserver.h>

namespace mivora {

/// `source`, a calendar, as the program knows it. `address` is what the calendar itself calls its e-mail
/// address; may be empty.
DesktopCalendar describeCalendar(ESourceRegistry *registry, ESource *source, const std::string &address);

/// The addresses of the user's mail accounts.
std::vector<std::string> mailAddresses(ESourceRegistry *registry);

} // namespace mivora
