#include "Calendar/CalendarLoader.h"

#include <algorithm>
#include <map>

namespace mivora {

namespace {

Participation participationOf(ical::ParticipantStatus status)
{
    switch (status) {
    case ical::ParticipantStatus::accepted:
        return Participation::accepted;
    case ical::ParticipantStatus::declined:
        return Participation::declined;
    case ical::ParticipantStatus::tentative:
        return Participation::tentative;
    default:
        return Participation::unknown;
    }
}

/// The answer of the first attendee who is the user.
Participation ownParticipation(const std::vector<ical::Attendee> &attendees,
                               const std::vector<std::string> &ownAddresses)
{
    const auto isUser = [&](const ical::Attendee &attendee) {
        return std::any_of(ownAddresses.begin(), ownAddresses.end(), [&](const std::string &own) {
            return !own.empty() && (own == attendee.address || own == attendee.email);
        });
    };
    const auto user = std::find_if(attendees.begin(), attendees.end(), isUser);
    return user == attendees.end() ? Participation::unknown : participationOf(user->status);
}

} // namespace

void keepUnchanged(Meetings old, Meetings &meetings, MeetingChanges &changes)
{
    std::multimap<Timestamp, std::shared_ptr<const Meeting>> known;
    for (std::shared_ptr<const Meeting> &meeting : old)
        known.emplace(meeting->start, std::move(meeting));
    for (std::shared_ptr<const Meeting> &meeting : meetings) {
        const auto [first, last] = known.equal_range(meeting->start);
        const auto same = std::find_if(first, last, [&](const auto &k) { return *k.second == *meeting; });
        if (same == last) {
            changes.added.push_back(meeting);
        } else {
            meeting = std::move(same->second);
            known.erase(same);
        }
    }
    for (auto &[start, meeting] : known)
        changes.removed.push_back(std::move(meeting));
}

std::shared_ptr<const Meeting> meetingOf(ical::Occurrence occurrence, const std::string &calendarID,
                                         const std::vector<std::string> &ownAddresses)
{
    return std::make_shared<const Meeting>(
        Meeting::fromSnapshot({.eventIdentifier = std::move(occurrence.uid),
                               .title = std::move(occurrence.title),
                               .start = occurrence.start,
                               .end = occurrence.end,
                               .calendarID = calendarID,
                               .isAllDay = occurrence.isAllDay,
                               .participation = ownParticipation(occurrence.attendees, ownAddresses),
                               .attendeeCount = std::int64_t(occurrence.attendees.size()),
                               .url = std::move(occurrence.url),
                               .location = std::move(occurrence.location),
                               .notes = std::move(occurrence.notes)}));
}

} // namespace mivora
