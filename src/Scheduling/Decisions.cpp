#include "Scheduling/Decisions.h"

namespace mivora {

bool Decisions::allowPanel(const std::string &meetingID, Timestamp now) const
{
    if (dismissed.contains(meetingID) || joined.contains(meetingID))
        return false;
    const auto snooze = snoozedUntil.find(meetingID);
    return snooze == snoozedUntil.end() || now >= snooze->second;
}

void Decisions::keepOnly(const std::set<std::string> &meetingIDs)
{
    const auto isOther = [&](const std::string &id) { return !meetingIDs.contains(id); };
    std::erase_if(snoozedUntil, [&](const auto &entry) { return isOther(entry.first); });
    std::erase_if(dismissed, isOther);
    std::erase_if(joined, isOther);
}

} // namespace mivora
