#include "CalendarEds/DesktopLoader.h"

#include "Calendar/CalendarLog.h"
#include "Platform/PluginFile.h"

namespace mivora {

namespace {

DesktopInterval intervalOf(const EventWindow &window)
{
    // A floating time may be meant up to a day away from where UTC has it.
    constexpr double marginSeconds = 2 * 86400;
    return {secondsSinceEpoch(window.from) - marginSeconds, secondsSinceEpoch(window.to) + marginSeconds};
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

DesktopLoader::~DesktopLoader()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
        if (m_desktop)
            m_desktop->stop();
    }
    if (m_thread.joinable())
        m_thread.join();
}

void DesktopLoader::start(const EventWindow &window, Deliver deliver)
{
    m_events = std::make_unique<DesktopEvents>(window, m_setup.addresses, deliver);
    m_service = std::make_unique<DesktopService>(m_setup.bus);
    QObject::connect(m_service.get(), &DesktopService::found, [this](const QString &name) {
        m_thread = std::thread([this, service = name.toStdString()] { run(service); });
    });
    QObject::connect(m_service.get(), &DesktopService::missing, [deliver] { deliver(StoreUpdate()); });
}

void DesktopLoader::setWindow(const EventWindow &window)
{
    if (!m_events)
        return;
    m_events->setWindow(window);
    const std::lock_guard lock(m_mutex);
    if (m_desktop)
        m_desktop->setInterval(intervalOf(window));
}

void DesktopLoader::run(const std::string &service)
{
    if (const auto interval = makeDesktop())
        m_desktop->run(service, *interval, *m_events);
}

std::optional<DesktopInterval> DesktopLoader::makeDesktop()
{
    // Loading the libraries takes a while: outside of the lock.
    std::unique_ptr<DesktopCalendars> desktop = m_setup.factory();
    if (!desktop) {
        m_events->setAccess(DesktopAccess::unavailable);
        m_events->settle(true);
        return std::nullopt;
    }
    const std::lock_guard lock(m_mutex);
    if (m_isStopping)
        return std::nullopt;
    m_desktop = std::move(desktop);
    return intervalOf(m_events->window());
}

} // namespace mivora
