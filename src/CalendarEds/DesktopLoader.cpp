#include "CalendarEds/DesktopLoader.h"

#include "Platform/PluginFile.h"
#include "Platform/linux/BusCall.h"

#include <algorithm>

namespace mivora {

namespace {

/// The number at the end grows with changes that old programs can't follow; the library knows its own.
bool isSourcesName(const QString &name)
{
    return name.startsWith(QLatin1String("org.gnome.evolution.dataserver.Sources"));
}

void findIn(const QString &method, const QDBusConnection &bus, QObject *context,
            const std::function<void(const std::string &service)> &found,
            const std::function<void()> &ifMissing)
{
    callBus<QStringList>(bus, busCall(method), context,
                         [found, ifMissing](const QDBusPendingReply<QStringList> &reply) {
                             const QStringList names = reply.isValid() ? reply.value() : QStringList();
                             const auto name = std::find_if(names.begin(), names.end(), isSourcesName);
                             if (name == names.end())
                                 ifMissing();
                             else
                                 found(name->toStdString());
                         });
}

} // namespace

void findCalendarServer(const QDBusConnection &bus, QObject *context,
                        const std::function<void(const std::string &service)> &found)
{
    // Something else than the bus may have started it, such as a session manager.
    findIn(QStringLiteral("ListActivatableNames"), bus, context, found, [bus, context, found] {
        findIn(QStringLiteral("ListNames"), bus, context, found, [found] { found({}); });
    });
}

DesktopInterval intervalOf(const EventWindow &window)
{
    // A floating time may be meant up to a day away from where UTC has it.
    constexpr double marginSeconds = 2 * 86400;
    return {secondsSinceEpoch(window.from) - marginSeconds, secondsSinceEpoch(window.to) + marginSeconds};
}

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
    m_deliver = deliver;
    m_events = std::make_unique<DesktopEvents>(window, m_setup.addresses, std::move(deliver));
    // It may be installed later.
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    m_setup.bus.connect(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                        QStringLiteral("ActivatableServicesChanged"), this, SLOT(lookForServer()));
    lookForServer();
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

void DesktopLoader::lookForServer()
{
    findCalendarServer(m_setup.bus, this, [this](const std::string &service) {
        if (m_thread.joinable())
            return;
        if (service.empty())
            m_deliver(StoreUpdate());
        else
            m_thread = std::thread([this, service] { run(service); });
    });
}

void DesktopLoader::run(const std::string &service)
{
    // Loading the libraries takes a while: outside of the lock.
    std::unique_ptr<DesktopCalendars> desktop = m_setup.factory();
    if (!desktop) {
        m_events->setAccess(DesktopAccess::unavailable);
        return m_events->settle(true);
    }
    {
        const std::lock_guard lock(m_mutex);
        if (m_isStopping)
            return;
        m_desktop = std::move(desktop);
    }
    m_desktop->run(service, intervalOf(m_events->window()), *m_events);
}

} // namespace mivora
