#include "Calendar/OccurrenceList.h"

#include <algorithm>

namespace mivora {

bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to)
{
    return start < to && (end > from || (end <= start && start >= from));
}

void OccurrenceList::change(const std::unordered_set<const StoreEvent *> &removed, StoreEvents added)
{
    if (!removed.empty())
        std::erase_if(m_occurrences, [&](const Occurrence &o) { return removed.contains(o.event.get()); });
    const auto startsBefore = [](const Occurrence &left, const Occurrence &right) {
        return left.start < right.start;
    };
    const std::size_t kept = m_occurrences.size();
    m_occurrences.reserve(kept + added.size());
    for (std::shared_ptr<const StoreEvent> &event : added)
        m_occurrences.push_back({event->start, event->end, {}, std::move(event)});
    const auto middle = m_occurrences.begin() + std::ptrdiff_t(kept);
    std::stable_sort(middle, m_occurrences.end(), startsBefore);
    std::inplace_merge(m_occurrences.begin(), middle, m_occurrences.end(), startsBefore);
    setLatestEnds();
}

void OccurrenceList::appendOverlapping(Timestamp from, Timestamp to, StoreEvents &found) const
{
    // Nothing before the first occurrence with a late enough end is still running at `from`. One without
    // length counts when it starts at `from`, where its end is too.
    auto at = std::partition_point(m_occurrences.begin(), m_occurrences.end(),
                                   [from](const Occurrence &o) { return o.latestEnd < from; });
    for (; at != m_occurrences.end() && at->start < to; ++at) {
        if (overlaps(at->start, at->end, from, to))
            found.push_back(at->event);
    }
}

void OccurrenceList::setLatestEnds()
{
    Timestamp latest = Timestamp::min(); // the lowest there is
    for (Occurrence &occurrence : m_occurrences) {
        latest = std::max({latest, occurrence.start, occurrence.end});
        occurrence.latestEnd = latest;
    }
}

} // namespace mivora
