#pragma once

#include "Calendar/EventStore.h"

namespace mivora {

/// Marks those of \a attendees that have one of the user's \a addresses, which are in lower case.
void markCurrentUser(std::vector<StoreAttendee> &attendees, const std::vector<std::string> &addresses);

} // namespace mivora
