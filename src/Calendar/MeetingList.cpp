#include "Calendar/MeetingList.h"

#include <algorithm>
#include <unordered_set>

namespace mivora {

bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to)
{
    return start < to && (end > from || (end <= start && start >= from));
}

void MeetingList::change(MeetingChanges changes)
{
    std::unordered_set<const Meeting *> removed;
    for (const std::shared_ptr<const Meeting> &meeting : changes.removed)
        removed.insert(meeting.get());
    if (!removed.empty())
        std::erase_if(m_entries, [&](const Entry &entry) { return removed.contains(entry.meeting.get()); });
    for (std::shared_ptr<const Meeting> &meeting : changes.added)
        m_entries.push_back({meeting->start, meeting->end, {}, std::move(meeting)});
    std::stable_sort(m_entries.begin(), m_entries.end(),
                     [](const Entry &left, const Entry &right) { return left.start < right.start; });
    Timestamp latest = Timestamp::min(); // the lowest there is
    for (Entry &entry : m_entries) {
        latest = std::max({latest, entry.start, entry.end});
        entry.latestEnd = latest;
    }
}

Meetings MeetingList::overlapping(Timestamp from, Timestamp to) const
{
    // Nothing before the first meeting with a late enough end is still running at `from`. One without length
    // counts when it starts at `from`, where its end is too.
    auto at = std::partition_point(m_entries.begin(), m_entries.end(),
                                   [from](const Entry &entry) { return entry.latestEnd < from; });
    Meetings found;
    for (; at != m_entries.end() && at->start < to; ++at) {
        if (overlaps(at->start, at->end, from, to))
            found.push_back(at->meeting);
    }
    return found;
}

} // namespace mivora
