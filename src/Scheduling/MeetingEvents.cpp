#include "Scheduling/MeetingEvents.h"

#include "MeetingTexts/TitleText.h"

#include <algorithm>

namespace mivora {

std::vector<MeetingEvents::Event> MeetingEvents::update(const std::vector<Meeting> &meetings, Timestamp now,
                                                        Timestamp endOfDay,
                                                        const std::function<bool(const Meeting &)> &isDue)
{
    constexpr Seconds oneDay{86400};
    std::vector<Event> ended, due, started;
    for (auto known = m_told.begin(); known != m_told.end();) {
        auto &[meeting, events] = known->second;
        const auto current = std::ranges::find(meetings, known->first, &Meeting::id);
        if (current != meetings.end())
            meeting = *current;
        // What starts later is tomorrow's, or the clock was set back.
        const bool isGone = current == meetings.end() && meeting.start < endOfDay;
        if (isGone && events.contains(meetingEvent::started) && events.emplace(meetingEvent::ended).second)
            ended.push_back({meetingEvent::ended, meeting});
        // The clock may be set back to before its end. What was cancelled begins anew when it comes back.
        const bool isOver = meeting.end <= now && now < meeting.end + oneDay;
        known = isGone && !isOver ? m_told.erase(known) : std::next(known);
    }
    std::ranges::sort(ended, startsBefore, &Event::meeting);
    for (const Meeting &meeting : meetings) {
        const auto known = m_told.find(meeting.id);
        const bool isStarted = known != m_told.end() && known->second.events.contains(meetingEvent::started);
        if (!isStarted && isDue(meeting) && isNews(meetingEvent::due, meeting))
            due.push_back({meetingEvent::due, meeting});
        if (meeting.start <= now && isNews(meetingEvent::started, meeting))
            started.push_back({meetingEvent::started, meeting});
    }
    due.insert(due.end(), started.begin(), started.end());
    ended.insert(ended.end(), due.begin(), due.end());
    return ended;
}

bool MeetingEvents::isNews(const char *event, const Meeting &meeting)
{
    return m_told.try_emplace(meeting.id, Told{meeting, {}}).first->second.events.emplace(event).second;
}

} // namespace mivora
