#pragma once

#include "Calendar/EventStore.h"

#include <unordered_set>
#include <vector>

namespace mivora {

/// Occurrences in order of their start, to be asked for those of an interval.
class OccurrenceList
{
public:
    bool isEmpty() const { return m_occurrences.empty(); }

    /// Takes away the occurrences in \a removed and adds \a added, in one pass.
    void change(const std::unordered_set<const StoreEvent *> &removed, StoreEvents added);

    /// Appends to \a found the occurrences that overlap [from, to).
    void appendOverlapping(Timestamp from, Timestamp to, StoreEvents &found) const;

private:
    struct Occurrence
    {
        Timestamp start;
        Timestamp end;
        /// The latest end of this occurrence and all before it: it never falls along the list.
        Timestamp latestEnd;
        std::shared_ptr<const StoreEvent> event;
    };

    void setLatestEnds();

    std::vector<Occurrence> m_occurrences;
};

/// Whether the time from \a start to \a end overlaps [from, to); without length it has to lie inside.
bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to);

} // namespace mivora
