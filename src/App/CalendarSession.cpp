#include "App/CalendarSession.h"

#include "App/AgendaJson.h"
#include "App/CalendarStores.h"
#include "App/MakeUpdater.h"
#include "MeetingTexts/LocalDay.h"
#include "Platform/linux/GioWorkspace.h"
#include "Platform/linux/LinuxPlatform.h"
#include "Platform/linux/XdgLoginItem.h"

#include <QTimer>

namespace mivora {

namespace {

/// Begins at a time, and stands there or goes on.
class SessionClock final : public Clock
{
public:
    explicit SessionClock(const SessionOptions &options)
        : m_begun(SystemClock().now()), m_start(options.at.value_or(m_begun)), m_time(options.time)
    {
    }

    Timestamp now() const override
    {
        return m_time == SessionOptions::Time::stands ? m_start : m_start + (SystemClock().now() - m_begun);
    }

private:
    Timestamp m_begun;
    Timestamp m_start;
    SessionOptions::Time m_time;
};

} // namespace

CalendarSession::CalendarSession(const SessionOptions &options)
    : m_zone(userTimeZone()), m_clock(std::make_unique<SessionClock>(options)),
      m_defaults(makeLinuxDefaultsStore()),
      m_loginItem(std::make_unique<XdgLoginItem>(XdgLoginItem::Places::ofThisProcess())),
      m_workspace(std::make_unique<GioWorkspace>()), m_installed(*m_workspace),
      m_prefs(std::make_unique<Preferences>(*m_defaults, *m_loginItem)),
      m_access(AccessMemory::defaultPath(), options.folders.empty() ? AccessMemory::Permission::remembered
                                                                    : AccessMemory::Permission::given)
{
    const StoreOptions stores{.folders = options.folders, .now = m_clock->now(), .zone = m_zone};
    m_source = std::make_unique<EventKitSource>(makeCalendarStore(stores, *m_defaults, m_access));
    m_scheduler = std::make_unique<Scheduler>(*m_source, *m_prefs, *m_clock);
    m_scheduler->setTimeZone(m_zone);
}

void CalendarSession::whenLoaded(std::function<void(bool)> then)
{
    EventStore &store = m_source->store();
    // Both wake-ups go with it: what comes first is the last.
    auto *wait = new QTimer(this);
    wait->setSingleShot(true);
    const auto check = [this, wait, &store, then = std::move(then)] {
        if (!store.isLoaded() && wait->remainingTime() > 0)
            return;
        wait->disconnect();
        store.disconnect(wait);
        wait->deleteLater();
        m_scheduler->refresh();
        then(store.isLoaded());
    };
    connect(wait, &QTimer::timeout, wait, check);
    connect(&store, &EventStore::changed, wait, check, Qt::QueuedConnection);
    wait->start(store.isLoaded() ? std::chrono::minutes(0) : std::chrono::minutes(1));
}

void CalendarSession::updateTimeZone()
{
    m_zone = userTimeZone();
    m_source->store().setTimeZone(m_zone);
    m_scheduler->setTimeZone(m_zone);
}

QJsonObject CalendarSession::agenda() const
{
    const auto &combo = m_prefs->joinHotKey();
    return agendaJson({.scheduler = *m_scheduler,
                       .source = *m_source,
                       .prefs = *m_prefs,
                       .installed = m_installed,
                       .now = m_clock->now(),
                       .zone = m_zone,
                       .joinHotKey = combo ? std::optional(combo->displayString()) : std::nullopt,
                       .canCheckForUpdates = canCheckForUpdates()});
}

} // namespace mivora
