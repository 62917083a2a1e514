#pragma once

#include "Calendar/EventStore.h"

namespace mivora {

/// Makes a store's event of \a occurrence. An attendee with one of \a ownAddresses is the user.
StoreEvent storeEventOf(ical::Occurrence occurrence, const std::string &calendarID,
                        const std::vector<std::string> &ownAddresses);

} // namespace mivora
