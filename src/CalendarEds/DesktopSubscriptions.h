#pragma once

#include "Calendar/CalendarSubscriptions.h"
#include "CalendarEds/DesktopLoader.h"

#include <atomic>

namespace mivora {

/// Whether the calendar is one that this program subscribed to, and may rename and remove.
bool isOwnSubscription(const std::string &calendarID);

/// Has Evolution Data Server subscribe to calendars. The server fetches them, again and again, and keeps
/// them: this program has no network.
///
/// For a process that does one request and reads no calendars with a `DesktopLoader`: the server's library
/// has one registry in each process, and tells what happens to the thread that made it.
class DesktopSubscriptions
{
public:
    struct Setup
    {
        /// The user's own e-mail addresses: what they declined isn't counted.
        std::vector<std::string> addresses{};
        /// The days of the week that is now.
        EventWindow week;
        DesktopCalendarsFactory factory = makeEdsCalendars;
    };

    explicit DesktopSubscriptions(Setup setup) : m_setup(std::move(setup)) {}

    /// Waits for the server, which may hang: for a thread of its own.
    SubscriptionAnswer perform(SubscriptionRequest request);

    /// Has perform() return soon; a calendar that was being added goes again. Can be called on any thread.
    void stop();

    /// Whether the server has answered. Can be called on any thread.
    bool isServerThere() const { return m_isServerThere; }

private:
    Setup m_setup;
    std::atomic<bool> m_isServerThere = false;
    std::mutex m_mutex;
    std::unique_ptr<DesktopCalendars> m_desktop;
    bool m_isStopped = false;
};

} // namespace mivora
