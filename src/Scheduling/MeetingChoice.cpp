#include "Scheduling/MeetingChoice.h"

#include "MeetingTexts/TitleText.h"

#include <algorithm>

namespace mivora {

namespace {

bool startsBefore(const Meeting &left, const Meeting &right)
{
    if (left.start != right.start)
        return left.start < right.start;
    return titleSortsBefore(left.title, right.title);
}

/// Of two meetings that start at the same time.
bool isBetter(const Meeting &left, const Meeting &right)
{
    if (left.joinLink.has_value() != right.joinLink.has_value())
        return left.joinLink.has_value();
    return titleSortsBefore(left.title, right.title);
}

/// The candidate whose start wins over those of all others by `startWins`. Of equals, the first one stays.
template<typename IsCandidate, typename StartWins>
std::optional<Meeting> choose(const std::vector<Meeting> &meetings, IsCandidate isCandidate,
                              StartWins startWins)
{
    const Meeting *best = nullptr;
    for (const Meeting &meeting : meetings) {
        if (!isCandidate(meeting))
            continue;
        if (!best || startWins(meeting.start, best->start) ||
            (meeting.start == best->start && isBetter(meeting, *best)))
            best = &meeting;
    }
    return best ? std::optional(*best) : std::nullopt;
}

} // namespace

bool Decisions::allowPanel(const std::string &meetingID, Timestamp now) const
{
    if (dismissed.contains(meetingID) || joined.contains(meetingID))
        return false;
    const auto snooze = snoozedUntil.find(meetingID);
    return snooze == snoozedUntil.end() || now >= snooze->second;
}

void Decisions::keepOnly(const std::vector<Meeting> &meetings)
{
    const auto isGone = [&](const std::string &id) {
        return std::ranges::find(meetings, id, &Meeting::id) == meetings.end();
    };
    std::erase_if(snoozedUntil, [&](const auto &entry) { return isGone(entry.first); });
    std::erase_if(dismissed, isGone);
    std::erase_if(joined, isGone);
}

std::vector<Meeting> relevantMeetings(std::vector<Meeting> meetings, Timestamp now)
{
    std::erase_if(meetings, [&](const Meeting &meeting) {
        return meeting.isAllDay || meeting.participation == Participation::declined || meeting.end <= now;
    });
    std::ranges::stable_sort(meetings, startsBefore);
    return meetings;
}

std::optional<Meeting> nextMeeting(const std::vector<Meeting> &meetings)
{
    return choose(
        meetings, [](const Meeting &) { return true; }, std::less{});
}

std::optional<Meeting> panelMeeting(const std::vector<Meeting> &meetings, const Decisions &decisions,
                                    const PanelRules &rules, Timestamp now)
{
    const auto isDue = [&](const Meeting &meeting) {
        return decisions.allowPanel(meeting.id, now) && (meeting.joinLink || rules.remindWithoutLink) &&
               now >= meeting.start - rules.lead;
    };
    return choose(meetings, isDue, std::greater{});
}

} // namespace mivora
