#include "App/CalendarSession.h"

#include "App/AgendaJson.h"
#include "App/CalendarStores.h"
#include "App/MakeUpdater.h"
#include "Calendar/LoadWait.h"
#include "Calendar/LocalDay.h"
#include "Platform/linux/GioWorkspace.h"
#include "Platform/linux/LinuxPlatform.h"
#include "Platform/linux/XdgLoginItem.h"

namespace mivora {

namespace {

/// Shows one time, always.
class StandingClock final : public Clock
{
public:
    explicit StandingClock(Timestamp time) : m_time(time) {}

    Timestamp now() const override { return m_time; }

private:
    Timestamp m_time;
};

/// Begins at a time and goes on from there.
class PassingClock final : public Clock
{
public:
    explicit PassingClock(Timestamp start) : m_ahead(start - SystemClock().now()) {}

    Timestamp now() const override { return SystemClock().now() + m_ahead; }

private:
    Seconds m_ahead;
};

std::unique_ptr<Clock> clockFor(const SessionOptions &options)
{
    if (!options.at && options.time == SessionOptions::Time::passes)
        return std::make_unique<SystemClock>();
    const Timestamp start = options.at.value_or(SystemClock().now());
    if (options.time == SessionOptions::Time::passes)
        return std::make_unique<PassingClock>(start);
    return std::make_unique<StandingClock>(start);
}

} // namespace

CalendarSession::CalendarSession(const SessionOptions &options)
    : m_zone(userTimeZone()), m_clock(clockFor(options)), m_defaults(makeLinuxDefaultsStore()),
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

bool CalendarSession::load()
{
    const bool loaded = waitUntilLoaded(m_source->store(), std::chrono::minutes(1));
    m_scheduler->refresh();
    return loaded;
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
