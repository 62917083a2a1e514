#include "CalendarEds/DesktopSubscriptions.h"

#include <QTimer>
#include <algorithm>
#include <atomic>
#include <semaphore>

namespace mivora {

namespace {

using namespace std::chrono_literals;

/// A server that has yet to be started may take this long.
constexpr auto storePatience = 12s;
/// The plug-in itself gives up before.
constexpr auto fetchPatience = 50s;

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

/// What the request has in common with its thread, which may outlive it.
struct DesktopSubscriptions::Work
{
    Work(SubscriptionRequest wanted, Setup with) : request(std::move(wanted)), setup(std::move(with)) {}

    void run()
    {
        const SubscriptionAnswer answer = perform();
        const std::lock_guard lock(mutex);
        if (owner)
            QMetaObject::invokeMethod(
                owner, [to = owner, answer] { to->finish(answer); }, Qt::QueuedConnection);
        isOver.release();
    }

    SubscriptionAnswer perform()
    {
        auto made = setup.factory();
        if (!made)
            return {SubscriptionFault::noStore};
        {
            const std::lock_guard lock(mutex);
            desktop = std::move(made);
            if (!owner)
                desktop->stop();
        }
        std::map<std::string, std::size_t> meetings;
        DesktopEvents events(setup.week, setup.addresses, [&](const StoreUpdate &update) {
            isServerThere = true;
            for (const auto &meeting : update.changes.added)
                meetings[meeting->calendarID] += isMeeting(*meeting) ? 1 : 0;
        });
        const auto attempt = [&] {
            return desktop->perform(request, addressesToTry(request.address), intervalOf(setup.week), events);
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

    SubscriptionRequest request;
    Setup setup;
    std::atomic<bool> isServerThere = false;
    std::mutex mutex;
    /// Null when nobody waits any more.
    DesktopSubscriptions *owner = nullptr;
    std::unique_ptr<DesktopCalendars> desktop;
    std::binary_semaphore isOver{0};
};

DesktopSubscriptions::DesktopSubscriptions(SubscriptionRequest request, Setup setup, Answered answered)
    : m_answered(std::move(answered)), m_work(new Work(std::move(request), std::move(setup)))
{
    if (m_work->request.action == SubscriptionRequest::Action::add &&
        hostOf(m_work->request.address).empty()) {
        finishAfter(0s, SubscriptionFault::noAddress);
        return;
    }
    m_work->request.id = serverID(m_work->request.id);
    findCalendarServer(m_work->setup.bus, this, [this](const std::string &service) {
        if (service.empty())
            finish({SubscriptionFault::noStore});
        else
            start();
    });
    QTimer::singleShot(storePatience, this, [this] {
        if (!m_work->isServerThere)
            finish({SubscriptionFault::storeSilent});
    });
    finishAfter(fetchPatience, SubscriptionFault::storeSilent);
}

DesktopSubscriptions::~DesktopSubscriptions()
{
    {
        const std::lock_guard lock(m_work->mutex);
        if (!std::exchange(m_work->owner, nullptr))
            return;
        if (m_work->desktop)
            m_work->desktop->stop();
    }
    (void)m_work->isOver.try_acquire_for(2s);
}

void DesktopSubscriptions::start()
{
    m_work->owner = this;
    std::thread([work = m_work] { work->run(); }).detach();
}

void DesktopSubscriptions::finishAfter(std::chrono::milliseconds delay, SubscriptionFault fault)
{
    QTimer::singleShot(delay, this, [this, fault] { finish({fault}); });
}

void DesktopSubscriptions::finish(const SubscriptionAnswer &answer)
{
    if (const auto answered = std::exchange(m_answered, nullptr))
        answered(answer);
}

bool isOwnSubscription(const std::string &calendarID)
{
    return calendarID.starts_with(DesktopEvents::idPrefix) &&
           serverID(calendarID).starts_with(subscriptionPrefix);
}

} // namespace mivora
