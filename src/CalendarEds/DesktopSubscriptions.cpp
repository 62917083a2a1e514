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

/// What a request has in common with its thread.
class DesktopSubscriptions::Work
{
public:
    Work(SubscriptionRequest request, const Setup &setup)
        : m_request(std::move(request)), m_setup(setup), m_week(setup.week())
    {
    }

    /// What is given the answer, on the thread, unless nobody waits any more.
    void setDelivery(Answered deliver) { m_deliver = std::move(deliver); }

    void run()
    {
        const SubscriptionAnswer answer = perform();
        const std::lock_guard lock(m_mutex);
        if (m_deliver)
            m_deliver(answer);
        m_isOver.release();
    }

    void waitForEnd() { (void)m_isOver.try_acquire_for(2s); }

    void stop()
    {
        const std::lock_guard lock(m_mutex);
        m_isStopped = true;
        m_deliver = nullptr;
        if (m_desktop)
            m_desktop->stop();
    }

    bool isServerThere() const { return m_isServerThere; }

private:
    SubscriptionAnswer perform()
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
        std::map<std::string, std::size_t> meetings;
        DesktopEvents events(m_week, m_setup.addresses, [&](const StoreUpdate &update) {
            m_isServerThere = true;
            for (const auto &meeting : update.changes.added)
                meetings[meeting->calendarID] += isMeeting(*meeting) ? 1 : 0;
        });
        const auto attempt = [&] {
            return m_desktop->perform(m_request, addressesToTry(m_request.address), intervalOf(m_week),
                                      events);
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

    SubscriptionRequest m_request;
    Setup m_setup;
    EventWindow m_week;
    std::atomic<bool> m_isServerThere = false;
    std::mutex m_mutex;
    Answered m_deliver;
    std::unique_ptr<DesktopCalendars> m_desktop;
    bool m_isStopped = false;
    std::binary_semaphore m_isOver{0};
};

class DesktopSubscriptions::DesktopJob final : public QObject, public Job
{
public:
    DesktopJob(std::shared_ptr<Work> work, Answered answered)
        : m_work(std::move(work)), m_answered(std::move(answered))
    {
    }

    ~DesktopJob() override { m_work->stop(); }
    Q_DISABLE_COPY_MOVE(DesktopJob)

    void start(const QDBusConnection &bus)
    {
        findCalendarServer(bus, this, [this](const std::string &service) {
            if (service.empty())
                finish({SubscriptionFault::noStore});
            else
                startThread();
        });
        QTimer::singleShot(storePatience, this, [this] {
            if (!m_work->isServerThere())
                finish({SubscriptionFault::storeSilent});
        });
        finishLater(SubscriptionFault::storeSilent, fetchPatience);
    }

    void finishLater(SubscriptionFault fault, std::chrono::milliseconds delay)
    {
        QTimer::singleShot(delay, this, [this, fault] { finish({fault}); });
    }

private:
    void startThread()
    {
        m_work->setDelivery([this](const SubscriptionAnswer &answer) {
            QMetaObject::invokeMethod(
                this, [this, answer] { finish(answer); }, Qt::QueuedConnection);
        });
        std::thread([work = m_work] { work->run(); }).detach();
    }

    void finish(const SubscriptionAnswer &answer)
    {
        if (const auto answered = std::exchange(m_answered, nullptr))
            answered(answer);
    }

    std::shared_ptr<Work> m_work;
    Answered m_answered;
};

DesktopSubscriptions::~DesktopSubscriptions()
{
    for (const std::weak_ptr<Work> &known : m_works)
        if (const std::shared_ptr<Work> work = known.lock())
            work->waitForEnd();
}

std::unique_ptr<CalendarSubscriptions::Job> DesktopSubscriptions::perform(const SubscriptionRequest &request,
                                                                          Answered answered)
{
    const bool isAddress =
        request.action != SubscriptionRequest::Action::add || !hostOf(request.address).empty();
    SubscriptionRequest forServer = request;
    forServer.id = serverID(request.id);
    const auto work = std::make_shared<Work>(std::move(forServer), m_setup);
    auto job = std::make_unique<DesktopJob>(work, std::move(answered));
    if (!isAddress) {
        job->finishLater(SubscriptionFault::noAddress, 0s);
        return job;
    }
    std::erase_if(m_works, [](const auto &known) { return known.expired(); });
    m_works.push_back(work);
    job->start(m_setup.bus);
    return job;
}

bool DesktopSubscriptions::isOwn(const std::string &calendarID) const
{
    return calendarID.starts_with(DesktopEvents::idPrefix) &&
           serverID(calendarID).starts_with(subscriptionPrefix);
}

} // namespace mivora
