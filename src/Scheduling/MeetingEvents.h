#pragma once

#include "Meetings/Meeting.h"

#include <functional>
#include <map>
#include <set>
#include <string_view>
#include <vector>

namespace mivora {

/// What happens to a meeting, by the names that scripts know; docs/agenda-json.md describes it.
namespace meetingEvent {

inline constexpr const char *due = "MeetingDue";
inline constexpr const char *joined = "MeetingJoined";
inline constexpr const char *started = "MeetingStarted";
inline constexpr const char *ended = "MeetingEnded";

} // namespace meetingEvent

/// Finds what is to be told of meetings: everything once, and an end for each start.
class MeetingEvents
{
public:
    struct Event
    {
        const char *name;
        Meeting meeting;
    };

    /// What is to be told at `now`, in order, when `meetings` are those until `endOfDay` that have not ended.
    std::vector<Event> update(const std::vector<Meeting> &meetings, Timestamp now, Timestamp endOfDay,
                              const std::function<bool(const Meeting &)> &isDue);

    /// Whether `event` is to be told of the meeting: it was not yet, and is from now on.
    bool isNews(const char *event, const Meeting &meeting);

private:
    struct Told
    {
        Meeting meeting;
        std::set<std::string_view> events;
    };

    std::map<std::string, Told> m_told;
};

} // namespace mivora
