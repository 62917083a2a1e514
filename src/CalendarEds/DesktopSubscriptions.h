#pragma once

#include "Calendar/CalendarSubscriptions.h"
#include "CalendarEds/DesktopLoader.h"

namespace mivora {

/// Subscriptions of Evolution Data Server's. Each request has a thread of its own, which is left to itself
/// when the server hangs; only with a request is anything loaded.
///
/// Not for a process that reads calendars with a `DesktopLoader` as well, and for one request at a time: the
/// server's library has one registry in each process, and tells what happens to the thread that made it.
class DesktopSubscriptions final : public CalendarSubscriptions
{
public:
    struct Setup
    {
        QDBusConnection bus;
        /// The user's own e-mail addresses: what they declined isn't counted.
        std::vector<std::string> addresses{};
        /// Gives the days of the week that is now.
        std::function<EventWindow()> week;
        DesktopCalendarsFactory factory = makeEdsCalendars;
    };

    explicit DesktopSubscriptions(Setup setup) : m_setup(std::move(setup)) {}

    /// Waits a moment for what is being taken back.
    ~DesktopSubscriptions() override;
    Q_DISABLE_COPY_MOVE(DesktopSubscriptions)

    std::unique_ptr<Job> perform(const SubscriptionRequest &request, Answered answered) override;
    bool isOwn(const std::string &calendarID) const override;

private:
    class Work;
    class DesktopJob;

    Setup m_setup;
    std::vector<std::weak_ptr<Work>> m_works;
};

} // namespace mivora
