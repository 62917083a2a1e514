#pragma once

#include "Calendar/CalendarSubscriptions.h"

#include <QString>

namespace mivora {

/// What to tell of a fault, and what to do about it. `host` is the one that was asked.
QString faultText(SubscriptionFault fault, const QString &host = {});

/// How the calendar is: how many meetings this week has, or why it couldn't be fetched.
QString stateText(const SubscribedCalendar &calendar);

} // namespace mivora
