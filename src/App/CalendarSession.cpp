#include "App/CalendarSession.h"

#include "App/MakeUpdater.h"
#include "CalendarFolder/FolderLoader.h"
#include "MeetingTexts/MeetingTexts.h"
#include "Preferences/Settings.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTimer>

namespace mivora {

namespace {

/// Begins at a time, and stands there or goes on.
class SessionClock final : public Clock
{
public:
    explicit SessionClock(const SessionOptions &options)
        : m_begun(SystemClock().now()), m_start(options.at.value_or(m_begun)), m_passes(options.timePasses)
    {
    }

    Timestamp now() const override { return m_passes ? m_start + (SystemClock().now() - m_begun) : m_start; }

private:
    Timestamp m_begun;
    Timestamp m_start;
    bool m_passes;
};

std::vector<std::string> ownAddresses(const DefaultsStore &defaults)
{
    std::vector<std::string> addresses;
    for (const QString &address : storedList(defaults, settingsKey::addresses))
        addresses.push_back(address.toStdString());
    return addresses;
}

bool readsDesktopCalendars()
{
    return qEnvironmentVariable("MIVORA_EDS") != QLatin1String("none");
}

EventWindow thisWeek()
{
    const QTimeZone zone = userTimeZone();
    const Timestamp now = SystemClock().now();
    const auto seconds = qint64(secondsSinceEpoch(now));
    const int weekday = QDateTime::fromSecsSinceEpoch(seconds, zone).date().dayOfWeek();
    const int daysGone = (weekday - int(QLocale().firstDayOfWeek()) + 7) % 7;
    return {startOfDay(now, zone, -daysGone), startOfDay(now, zone, 7 - daysGone), zone};
}

} // namespace

std::unique_ptr<EventKitSource> makeCalendarSource(const StoreOptions &options, const DefaultsStore &defaults,
                                                   AccessMemory &access)
{
    const std::vector<std::string> addresses = ownAddresses(defaults);
    EventKitSource::Loaders loaders;
    loaders.push_back(std::make_unique<FolderLoader>(
        FolderLoader::Setup{.roots = calendarRoots(options.folders), .addresses = addresses}));
    if (options.folders.empty() && readsDesktopCalendars())
        loaders.push_back(std::make_unique<DesktopLoader>(
            DesktopLoader::Setup{.bus = QDBusConnection::sessionBus(), .addresses = addresses}));
    return std::make_unique<EventKitSource>(access, windowAround(options.now, options.zone),
                                            std::move(loaders));
}

DesktopSubscriptions::Setup subscriptionSetup(const DefaultsStore &defaults)
{
    DesktopSubscriptions::Setup setup{.addresses = ownAddresses(defaults), .week = thisWeek()};
    if (!readsDesktopCalendars())
        setup.factory = [] { return nullptr; };
    return setup;
}

CalendarSession::CalendarSession(const SessionOptions &options)
    : m_zone(userTimeZone()), m_clock(std::make_unique<SessionClock>(options)),
      m_access(AccessMemory::defaultPath(), options.folders.empty() ? AccessMemory::Permission::remembered
                                                                    : AccessMemory::Permission::given),
      m_source(makeCalendarSource({.folders = options.folders, .now = m_clock->now(), .zone = m_zone},
                                  m_defaults, m_access))
{
    m_scheduler.setTimeZone(m_zone);
}

void CalendarSession::whenLoaded(std::function<void(bool)> then)
{
    // Both wake-ups go with it: what comes first is the last.
    auto *wait = new QTimer(this);
    wait->setSingleShot(true);
    const auto check = [this, wait, then = std::move(then)] {
        if (!m_source->isLoaded() && wait->remainingTime() > 0)
            return;
        wait->disconnect();
        m_source->disconnect(wait);
        // Of two changes in a row, the second one is already under way.
        QCoreApplication::removePostedEvents(wait, QEvent::MetaCall);
        wait->deleteLater();
        m_scheduler.refresh();
        then(m_source->isLoaded());
    };
    connect(wait, &QTimer::timeout, wait, check);
    connect(m_source.get(), &EventKitSource::changed, wait, check, Qt::QueuedConnection);
    wait->start(m_source->isLoaded() ? std::chrono::minutes(0) : std::chrono::minutes(1));
}

void CalendarSession::updateTimeZone()
{
    m_zone = userTimeZone();
    m_source->setTimeZone(m_zone);
    m_scheduler.setTimeZone(m_zone);
}

QJsonObject CalendarSession::agenda(bool all) const
{
    return agendaJson(agendaContext(all));
}

AgendaContext CalendarSession::agendaContext(bool all) const
{
    const auto &combo = m_prefs.joinHotKey();
    return {.scheduler = m_scheduler,
            .source = *m_source,
            .prefs = m_prefs,
            .installed = m_installed,
            .now = m_clock->now(),
            .zone = m_zone,
            .joinHotKey = combo ? std::optional(combo->text()) : std::nullopt,
            .canCheckForUpdates = canCheckForUpdates(),
            .all = all};
}

} // namespace mivora
