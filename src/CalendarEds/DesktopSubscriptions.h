#pragma once

#include "Calendar/CalendarSubscriptions.h"
#include "CalendarEds/DesktopLoader.h"

namespace mivora {

/// Whether the calendar is one that this program subscribed to, and may rename and remove.
bool isOwnSubscription(const std::string &calendarID);

/// One request about subscriptions of Evolution Data Server's, on a thread of its own, which is left to
/// itself when the server hangs. The server fetches the calendars, again and again, and keeps them: this
/// program has no network.
///
/// One at a time, and not in a process that reads calendars with a `DesktopLoader` as well: the server's
/// library has one registry in each process, and tells what happens to the thread that made it.
class DesktopSubscriptions final : public QObject
{
public:
    using Answered = std::function<void(const SubscriptionAnswer &answer)>;

    struct Setup
    {
        QDBusConnection bus;
        /// The user's own e-mail addresses: what they declined isn't counted.
        std::vector<std::string> addresses{};
        /// The days of the week that is now.
        EventWindow week;
        DesktopCalendarsFactory factory = makeEdsCalendars;
    };

    /// `answered` is called once, later, within a minute.
    DesktopSubscriptions(SubscriptionRequest request, Setup setup, Answered answered);

    /// Forgets the answer. A calendar that was being added goes again, which takes a moment.
    ~DesktopSubscriptions() override;
    Q_DISABLE_COPY_MOVE(DesktopSubscriptions)

private:
    struct Work;

    void start();
    void finishAfter(std::chrono::milliseconds delay, SubscriptionFault fault);
    void finish(const SubscriptionAnswer &answer);

    Answered m_answered;
    std::shared_ptr<Work> m_work;
};

} // namespace mivora
