#pragma once

#include "Meetings/Timestamp.h"

#include <map>
#include <set>
#include <string>

namespace mivora {

/// What the user decided about single meetings, by Meeting::id. Lives in memory only.
struct Decisions
{
    /// The panel of the meeting stays hidden until then.
    std::map<std::string, Timestamp> snoozedUntil;
    std::set<std::string> dismissed;
    std::set<std::string> joined;

    /// Whether none of them hides the panel of the meeting at \a now.
    bool allowPanel(const std::string &meetingID, Timestamp now) const;

    /// Forgets all decisions about other meetings than these.
    void keepOnly(const std::set<std::string> &meetingIDs);
};

} // namespace mivora
