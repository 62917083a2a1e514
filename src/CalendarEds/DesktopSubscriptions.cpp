#include "CalendarEds/DesktopSubscriptions.h"

#include <algorithm>

namespace mivora {

namespace {

bool isMeeting(const Meeting &meeting)
{
    return !meeting.isAllDay && meeting.participation != Participation::declined;
}

/// The server's identifier of the calendar.
std::string serverID(const std::string &calendarID)
{
    return calendarID.starts_with(DesktopEvents::idPrefix) ? calendarID.substr(DesktopEvents::idPrefix.size())
                                                           : calendarID;
}

} // namespace

bool isOwnSubscription(const std::string &calendarID)
{
    return calendarID.starts_with(DesktopEvents::idPrefix) &&
           serverID(calendarID).starts_with(subscriptionPrefix);
}

SubscriptionAnswer DesktopSubscriptions::perform(SubscriptionRequest request)
{
    auto made = m_setup.factory();
    if (!made)
        return {SubscriptionFault::noStore};
    {
        const std::lock_guard lock(m_mutex);
        m_desktop = std::move(made);
        if (m_isStopped)
            m_desktop->stop();
    }
    request.id = serverID(request.id);
    std::map<std::string, std::size_t> meetings;
    DesktopEvents events(m_setup.week, m_setup.addresses, [&](const StoreUpdate &update) {
        m_isServerThere = true;
        meetings.clear();
        for (const auto &meeting : update.meetings)
            meetings[meeting->calendarID] += isMeeting(*meeting) ? 1 : 0;
    });
    const auto attempt = [&] {
        return m_desktop->perform(request, addressesToTry(request.address), intervalOf(m_setup.week), events);
    };
    SubscriptionAnswer answer = attempt();
    // A server that died is started anew.
    if (answer.fault == SubscriptionFault::storeSilent)
        answer = attempt();
    for (SubscribedCalendar &calendar : answer.calendars) {
        calendar.id.insert(0, DesktopEvents::idPrefix);
        calendar.meetings = meetings[calendar.id];
    }
    std::sort(answer.calendars.begin(), answer.calendars.end(),
              [](const auto &left, const auto &right) { return left.name < right.name; });
    return answer;
}

void DesktopSubscriptions::stop()
{
    const std::lock_guard lock(m_mutex);
    m_isStopped = true;
    if (m_desktop)
        m_desktop->stop();
}

} // namespace mivora
