#pragma once

#include "CalendarEds/plugin/EdsCalendar.h"

#include <map>

namespace mivora {

/// All calendars of the server, as long as the program wants them. Belongs to the thread that made it.
class EdsSession
{
public:
    /// Begins at once. `bus` and `reader` outlive the session.
    EdsSession(GDBusConnection *bus, const std::string &service, DesktopInterval interval,
               DesktopCalendarsReader &reader);
    ~EdsSession();
    EdsSession(const EdsSession &) = delete;
    EdsSession &operator=(const EdsSession &) = delete;

    void setInterval(DesktopInterval interval);

private:
    using Clock = std::chrono::steady_clock;

    void connect();
    void handleRegistry(GAsyncResult *result);
    void followRegistry();
    void handleServerGone();
    void disconnect();
    void handleFailure(const GError &error);
    void retryLater();
    void noteNews();
    void updateAccounts();
    DesktopAccounts accountsOf(const std::vector<GlibObject<ESource>> &sources) const;
    void followCalendars(const std::vector<GlibObject<ESource>> &sources);
    void settle();
    bool hasAll() const;
    void reportCredentials(ESource *source, const GError *error);

    /// Outlives the session.
    GDBusConnection *m_bus;
    DesktopInterval m_interval;
    DesktopCalendarsReader &m_reader;
    guint m_watch = 0;
    GlibObject<ESourceRegistry> m_registry;
    std::map<std::string, std::unique_ptr<EdsCalendar>> m_calendars;
    std::optional<DesktopAccounts> m_accounts;
    /// The server couldn't be had at the last attempt.
    bool m_hasFailed = false;
    Clock::time_point m_unsettledSince{};
    /// Calendars that take longer than this don't hold up the others.
    bool m_waitedEnough = false;
    std::set<std::string> m_credentialsAsked;
    std::string m_reported;
    Retry m_retry;
    GlibSource m_settle;
    GlibSource m_patience;
    std::unique_ptr<GlibCalls> m_calls;
};

} // namespace mivora
