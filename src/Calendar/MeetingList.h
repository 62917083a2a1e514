#pragma once

#include "Calendar/CalendarLoader.h"

namespace mivora {

/// Meetings in order of their start, to be asked for those of an interval.
class MeetingList
{
public:
    /// Takes away the objects that were removed and adds those that are new, in one pass.
    void change(MeetingChanges changes);

    /// The meetings that overlap [from, to).
    Meetings overlapping(Timestamp from, Timestamp to) const;

private:
    struct Entry
    {
        Timestamp start;
        Timestamp end;
        /// The latest end of this meeting and of all before it: it never falls along the list.
        Timestamp latestEnd;
        std::shared_ptr<const Meeting> meeting;
    };

    std::vector<Entry> m_entries;
};

/// Whether the time from `start` to `end` overlaps [from, to); without length it has to lie inside.
bool overlaps(Timestamp start, Timestamp end, Timestamp from, Timestamp to);

} // namespace mivora
