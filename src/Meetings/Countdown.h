#pragma once

#include "Meetings/Timestamp.h"

#include <string>

namespace mivora {

/// The time left until something that is \a left away: "now" below a minute, else minutes rounded up, as in
/// "2m", "1h" or "1h 5m".
std::string countdownText(Seconds left);

} // namespace mivora
