#pragma once

#include "Meetings/Timestamp.h"

#include <QString>

namespace mivora {

/// The time left until something that is \a left away, in the user's language: "now" below a minute, else
/// minutes rounded up, as in "2m", "1h" or "1h 5m".
QString countdownText(Seconds left);

/// The same where there is room for three or four characters: "now", "2m", and from an hour on the nearer
/// hour.
QString shortCountdownText(Seconds left);

} // namespace mivora
