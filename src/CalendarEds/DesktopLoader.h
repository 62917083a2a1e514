#pragma once

#include "CalendarEds/DesktopEvents.h"

#include <QDBusConnection>
#include <thread>

namespace mivora {

/// Gives what stands behind the seam; null, with a line in the log, when it can't be had.
using DesktopCalendarsFactory = std::function<std::unique_ptr<DesktopCalendars>()>;

/// Looks for the server on `bus`: `found` is called once, later and on `context`'s thread, with the name that
/// it has or would be started by; empty when there is none. Not when `context` is gone by then.
void findCalendarServer(const QDBusConnection &bus, QObject *context,
                        const std::function<void(const std::string &service)> &found);

/// The days of `window`, whatever the zone that a time without one is meant in.
DesktopInterval intervalOf(const EventWindow &window);

/// Loads the plug-in mivora-eds ($MIVORA_EDS, see PluginFile). Can be called on any thread.
std::unique_ptr<DesktopCalendars> makeEdsCalendars();

/// The calendars that the desktop keeps in Evolution Data Server: those of online accounts, and local ones.
///
/// Nothing of it is loaded where the session bus doesn't know the server. Access is full while the server can
/// be had, restricted when the bus refuses it, else denied. While it is away for a moment the last answer
/// stands.
class DesktopLoader final : public QObject, public CalendarLoader
{
    Q_OBJECT

public:
    struct Setup
    {
        QDBusConnection bus;
        /// The user's own e-mail addresses, for calendars that name no owner.
        std::vector<std::string> addresses{};
        DesktopCalendarsFactory factory = makeEdsCalendars;
    };

    explicit DesktopLoader(Setup setup) : m_setup(std::move(setup)) {}

    /// Waits for the event being read.
    ~DesktopLoader() override;
    Q_DISABLE_COPY_MOVE(DesktopLoader)

    void start(const EventWindow &window, Deliver deliver) override;
    void setWindow(const EventWindow &window) override;

private:
    Q_SLOT void lookForServer();
    void run(const std::string &service);

    Setup m_setup;
    Deliver m_deliver;
    std::unique_ptr<DesktopEvents> m_events;
    std::mutex m_mutex;
    std::unique_ptr<DesktopCalendars> m_desktop;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace mivora
