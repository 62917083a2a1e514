#include "Calendar/CurrentUser.h"

#include <algorithm>

namespace mivora {

void markCurrentUser(std::vector<StoreAttendee> &attendees, const std::vector<std::string> &addresses)
{
    for (StoreAttendee &attendee : attendees)
        attendee.isCurrentUser =
            std::find(addresses.begin(), addresses.end(), attendee.address) != addresses.end();
}

} // namespace mivora
