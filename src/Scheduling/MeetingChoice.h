#pragma once

#include "Meetings/Meeting.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// Which meetings of a day count, which one is next, and which one gets the panel. Pure functions.
namespace mivora {

/// What the user decided about single meetings, by Meeting::id. Lives in memory only.
struct Decisions
{
    /// The panel of the meeting stays hidden until then.
    std::map<std::string, Timestamp> snoozedUntil;
    std::set<std::string> dismissed;
    std::set<std::string> joined;

    /// Whether none of them hides the panel of the meeting at `now`.
    bool allowPanel(const std::string &meetingID, Timestamp now) const;

    /// Forgets all decisions about other meetings than these.
    void keepOnly(const std::vector<Meeting> &meetings);
};

/// When a meeting is due for the panel.
struct PanelRules
{
    /// How long before the start the panel is shown.
    Seconds lead{60};
    /// Whether a meeting without a link gets one.
    bool remindWithoutLink = false;
};

/// The `meetings` of the user that have not ended at `now`, sorted by start, then title: neither those of
/// whole days nor the declined ones.
std::vector<Meeting> relevantMeetings(std::vector<Meeting> meetings, Timestamp now);

/// The meeting that starts first; of several, the one with a join link, then the one whose title sorts first.
std::optional<Meeting> nextMeeting(const std::vector<Meeting> &meetings);

/// The meeting whose panel is due at `now`. The one that starts last wins, so that an upcoming meeting takes
/// over from a running one; ties are decided as in nextMeeting().
std::optional<Meeting> panelMeeting(const std::vector<Meeting> &meetings, const Decisions &decisions,
                                    const PanelRules &rules, Timestamp now);

} // namespace mivora
