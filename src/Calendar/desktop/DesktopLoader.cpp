#include "Calendar/desktop/DesktopLoader.h"

#include "Calendar/CalendarLog.h"
#include "Platform/PluginFile.h"

#include <utility>

namespace mivora {

namespace {

/// A floating time may be meant up to a day away from where UTC has it.
constexpr double marginSeconds = 2 * 86400;

DesktopInterval intervalOf(const EventWindow &window)
{
    return {secondsSinceEpoch(window.from) - marginSeconds, secondsSinceEpoch(window.to) + marginSeconds};
}

AuthorizationStatus statusFor(DesktopAccess access)
{
    switch (access) {
    case DesktopAccess::granted:
        return AuthorizationStatus::fullAccess;
    case DesktopAccess::refused:
        return AuthorizationStatus::restricted;
    case DesktopAccess::unavailable:
        break;
    }
    return AuthorizationStatus::denied;
}

} // namespace

std::unique_ptr<DesktopCalendars> makeEdsCalendars()
{
    PluginFile file("mivora-eds", "MIVORA_EDS");
    auto *plugin = file.get<DesktopCalendarsPlugin>();
    if (!plugin) {
        qCWarning(calendarLog, "the desktop's calendars can't be read: %s", qPrintable(file.errorText()));
        return nullptr;
    }
    return plugin->make();
}

DesktopLoader::DesktopLoader(Setup setup, std::function<void()> onNews)
    : m_service(std::move(setup.service)), m_factory(std::move(setup.factory)),
      m_events(setup.window, std::move(setup.addresses),
               [this](const std::string &message) { report(message); }),
      m_window(std::move(setup.window)), m_news(std::move(onNews))
{
    m_thread = std::thread([this] { run(); });
}

DesktopLoader::~DesktopLoader()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        if (m_desktop)
            m_desktop->stop();
    }
    m_thread.join();
}

void DesktopLoader::setWindow(const EventWindow &window)
{
    const std::lock_guard lock(m_mutex);
    m_window = window;
    m_hasNewWindow = true;
    if (m_desktop)
        m_desktop->setInterval(intervalOf(window));
}

void DesktopLoader::run()
{
    if (const auto interval = start())
        m_desktop->run(m_service, *interval, *this);
}

std::optional<DesktopInterval> DesktopLoader::start()
{
    // Loading the libraries takes a while: outside of the lock.
    std::unique_ptr<DesktopCalendars> desktop = m_factory();
    if (!desktop) {
        setAccess(DesktopAccess::unavailable);
        settle(true);
        return std::nullopt;
    }
    const std::lock_guard lock(m_mutex);
    if (m_isStopping)
        return std::nullopt;
    m_desktop = std::move(desktop);
    return intervalOf(m_window);
}

void DesktopLoader::setAccess(DesktopAccess access)
{
    m_status = statusFor(access);
}

void DesktopLoader::setAccounts(DesktopAccounts accounts)
{
    m_events.setAccounts(std::move(accounts));
}

void DesktopLoader::startLoad(const std::string &calendarID)
{
    m_events.startLoad(calendarID);
}

void DesktopLoader::finishLoad(const std::string &calendarID)
{
    m_events.finishLoad(calendarID);
}

void DesktopLoader::putObjects(const std::string &calendarID, std::vector<CalendarObject> objects)
{
    m_events.put(calendarID, std::move(objects));
}

void DesktopLoader::removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names)
{
    m_events.remove(calendarID, names);
}

void DesktopLoader::putTimeZone(const std::string &calendarID, const std::string &id, std::string text)
{
    m_events.putTimeZone(calendarID, id, std::move(text));
}

void DesktopLoader::settle(bool hasAll)
{
    m_isLoaded = m_isLoaded || hasAll;
    publish();
}

void DesktopLoader::publish()
{
    std::optional<EventWindow> window;
    {
        const std::lock_guard lock(m_mutex);
        if (std::exchange(m_hasNewWindow, false))
            window = m_window;
    }
    if (window)
        m_events.setWindow(*window);
    LoaderNews news{.changes = m_events.update(),
                    .calendars = {},
                    .status = m_status,
                    .isChange = false,
                    .isLoaded = m_isLoaded};
    std::vector<StoreCalendar> calendars = m_events.calendars();
    if (calendars != m_calendars)
        news.calendars = m_calendars = std::move(calendars);
    news.isChange = window || news.calendars || !news.changes.isEmpty();
    m_news.push(std::move(news));
}

void DesktopLoader::report(const std::string &message)
{
    qCWarning(calendarLog, "%s", printable(message).c_str());
}

} // namespace mivora
