#include "Calendar/CurrentUser.h"

#include <algorithm>

namespace mivora {

namespace {

bool isOneOf(const ical::Attendee &attendee, const std::vector<std::string> &addresses)
{
    return std::any_of(addresses.begin(), addresses.end(), [&](const std::string &text) {
        const std::string own = ical::mailAddress(text);
        return !own.empty() && (own == attendee.address || own == attendee.email);
    });
}

} // namespace

StoreEvent storeEventOf(ical::Occurrence occurrence, const std::string &calendarID,
                        const std::vector<std::string> &ownAddresses)
{
    StoreEvent event;
    event.eventIdentifier = std::move(occurrence.uid);
    event.title = std::move(occurrence.title);
    event.start = occurrence.start;
    event.end = occurrence.end;
    event.isAllDay = occurrence.isAllDay;
    event.calendarID = calendarID;
    for (ical::Attendee &attendee : occurrence.attendees) {
        const bool isUser = isOneOf(attendee, ownAddresses);
        event.attendees.push_back({std::move(attendee.address), attendee.status, isUser});
    }
    event.url = std::move(occurrence.url);
    event.location = std::move(occurrence.location);
    event.notes = std::move(occurrence.notes);
    return event;
}

} // namespace mivora
