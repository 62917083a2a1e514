#pragma once

#include "Meetings/Timestamp.h"

#include <QTimeZone>

namespace mivora {

class Preferences;
class Scheduler;

/// When, after \a now, anything that the scheduler's state shows can change by time alone: a countdown's next
/// minute, a start or an end, a panel that becomes due, a snooze that runs out, the evening, midnight.
Timestamp nextChangeAfter(Timestamp now, const Scheduler &scheduler, const Preferences &prefs,
                          const QTimeZone &zone);

} // namespace mivora
