#pragma once

#include "Calendar/NewsQueue.h"
#include "Calendar/desktop/DesktopEvents.h"

#include <mutex>
#include <thread>

namespace mivora {

/// Gives what stands behind the seam; null, with a line in the log, when it can't be had.
using DesktopCalendarsFactory = std::function<std::unique_ptr<DesktopCalendars>()>;

/// Loads the plug-in mivora-eds ($MIVORA_EDS, see mivora::PluginFile). Can be called on any thread.
std::unique_ptr<DesktopCalendars> makeEdsCalendars();

/// Reads the desktop's calendars on a thread of its own. Nothing here blocks the caller, except the
/// destructor, which waits for the event being read.
class DesktopLoader final : private DesktopCalendarsReader
{
public:
    struct Setup
    {
        /// The name of the calendars on the session bus.
        std::string service;
        EventWindow window;
        /// The user's own addresses, in lower case.
        std::vector<std::string> addresses;
        DesktopCalendarsFactory factory;
    };

    /// \a onNews is called on the loader's thread when takeNews() has something to give.
    DesktopLoader(Setup setup, std::function<void()> onNews);
    ~DesktopLoader() override;
    Q_DISABLE_COPY_MOVE(DesktopLoader)

    /// Loads the occurrences of another window.
    void setWindow(const EventWindow &window);

    /// What is new since the last call, oldest first.
    std::vector<LoaderNews> takeNews() { return m_news.take(); }

private:
    void run();
    std::optional<DesktopInterval> start();
    void publish();

    void setAccess(DesktopAccess access) override;
    void setAccounts(DesktopAccounts accounts) override;
    void startLoad(const std::string &calendarID) override;
    void finishLoad(const std::string &calendarID) override;
    void putObjects(const std::string &calendarID, std::vector<CalendarObject> objects) override;
    void removeObjects(const std::string &calendarID, const std::vector<ObjectName> &names) override;
    void putTimeZone(const std::string &calendarID, const std::string &id, std::string text) override;
    void settle(bool hasAll) override;
    void report(const std::string &message) override;

    // The loader's thread only.
    std::string m_service;
    DesktopCalendarsFactory m_factory;
    DesktopEvents m_events;
    AuthorizationStatus m_status = AuthorizationStatus::fullAccess;
    std::vector<StoreCalendar> m_calendars;
    bool m_isLoaded = false;

    // Shared.
    std::mutex m_mutex;
    std::unique_ptr<DesktopCalendars> m_desktop;
    EventWindow m_window;
    bool m_hasNewWindow = false;
    bool m_isStopping = false;
    NewsQueue m_news;
    std::thread m_thread;
};

} // namespace mivora
