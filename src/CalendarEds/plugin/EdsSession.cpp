#include "CalendarEds/plugin/EdsSession.h"

#include "CalendarEds/plugin/EdsAccounts.h"
#include "CalendarEds/plugin/EdsFetch.h"

#include <algorithm>

namespace mivora {

namespace {

using std::chrono::milliseconds;

/// Changes that follow each other this closely belong together.
constexpr milliseconds quietTime{30};
/// A storm of changes is shown at least this often.
constexpr milliseconds longestBurst{250};
constexpr milliseconds patience{10'000};

DesktopAccess accessAfter(const GError &error)
{
    if (g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_ACCESS_DENIED) ||
        g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED))
        return DesktopAccess::refused;
    return DesktopAccess::unavailable;
}

/// A server that is slow is not one that is missing.
bool isTimeout(const GError &error)
{
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY) ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_TIMED_OUT) ||
           g_error_matches(&error, G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT);
}

} // namespace

EdsSession::EdsSession(GDBusConnection *bus, const std::string &service, DesktopInterval interval,
                       DesktopCalendarsReader &reader)
    : m_bus(bus), m_interval(interval), m_reader(reader), m_retry([this] { connect(); })
{
    const auto vanished = +[](GDBusConnection *, const gchar *, gpointer self) {
        static_cast<EdsSession *>(self)->handleServerGone();
    };
    m_watch = g_bus_watch_name_on_connection(bus, service.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
                                             vanished, this, nullptr);
    connect();
}

EdsSession::~EdsSession()
{
    g_bus_unwatch_name(m_watch);
    disconnect();
}

void EdsSession::setInterval(DesktopInterval interval)
{
    if (interval != m_interval) {
        m_interval = interval;
        for (const auto &[id, calendar] : m_calendars)
            calendar->setInterval(interval);
    }
    noteNews();
}

void EdsSession::connect()
{
    m_calls = std::make_unique<GlibCalls>();
    e_source_registry_new(m_calls->cancellable(), &GlibCalls::finish,
                          m_calls->then([this](GObject *, GAsyncResult *result) { handleRegistry(result); }));
}

void EdsSession::handleRegistry(GAsyncResult *result)
{
    GError *error = nullptr;
    m_registry.reset(e_source_registry_new_finish(result, &error));
    const GlibError owner(error);
    if (!m_registry)
        return handleFailure(*error);
    m_hasFailed = false;
    m_reported.clear();
    m_reader.setAccess(DesktopAccess::granted);
    m_waitedEnough = false;
    const auto endPatience = [this] {
        m_waitedEnough = true;
        noteNews();
    };
    m_patience = runLater(endPatience, patience);
    followRegistry();
    noteNews();
}

void EdsSession::followRegistry()
{
    const auto note =
        +[](ESourceRegistry *, ESource *, gpointer self) { static_cast<EdsSession *>(self)->noteNews(); };
    for (const char *signal :
         {"source-added", "source-changed", "source-removed", "source-enabled", "source-disabled"})
        g_signal_connect(m_registry.get(), signal, G_CALLBACK(note), this);
    const auto credentials = +[](ESourceRegistry *, ESource *source, ESourceCredentialsReason, const gchar *,
                                 GTlsCertificateFlags, const GError *error, gpointer self) {
        static_cast<EdsSession *>(self)->reportCredentials(source, error);
    };
    g_signal_connect(m_registry.get(), "credentials-required", G_CALLBACK(credentials), this);
}

void EdsSession::handleServerGone()
{
    // Also called at first, when the server has yet to be started.
    if (!m_registry)
        return;
    // What was read stays; the server is started anew.
    disconnect();
    retryLater();
}

void EdsSession::retryLater()
{
    // A bus that is gone doesn't come back: what was read stays as it is.
    if (!g_dbus_connection_is_closed(m_bus))
        m_retry.start();
}

void EdsSession::disconnect()
{
    m_calls.reset();
    m_calendars.clear();
    m_patience.reset();
    if (m_registry)
        g_signal_handlers_disconnect_by_data(m_registry.get(), this);
    m_registry.reset();
}

void EdsSession::handleFailure(const GError &error)
{
    const DesktopAccess access = accessAfter(error);
    std::string message = access == DesktopAccess::refused
                              ? "the bus doesn't let Mivora see the desktop's calendars: "
                              : "the desktop's calendars don't answer: ";
    message.append(error.message);
    if (message != m_reported)
        m_reader.report(message);
    m_reported = std::move(message);
    m_hasFailed = true;
    if (!isTimeout(error))
        m_reader.setAccess(access);
    retryLater();
    noteNews();
}

void EdsSession::noteNews()
{
    const auto now = Clock::now();
    if (!m_settle)
        m_unsettledSince = now;
    // In a long burst the timer runs off.
    if (now - m_unsettledSince < longestBurst)
        m_settle = runLater([this] { settle(); }, quietTime);
}

void EdsSession::updateAccounts()
{
    GList *enabled = e_source_registry_list_enabled(m_registry.get(), E_SOURCE_EXTENSION_CALENDAR);
    std::vector<GlibObject<ESource>> sources;
    for (GList *at = enabled; at; at = at->next)
        sources.emplace_back(static_cast<ESource *>(at->data));
    g_list_free(enabled);
    DesktopAccounts accounts = accountsOf(sources);
    if (accounts != m_accounts) {
        m_accounts = accounts;
        m_reader.setAccounts(std::move(accounts));
    }
    followCalendars(sources);
}

DesktopAccounts EdsSession::accountsOf(const std::vector<GlibObject<ESource>> &sources) const
{
    DesktopAccounts accounts;
    accounts.mailAddresses = mailAddresses(m_registry.get());
    for (const GlibObject<ESource> &source : sources) {
        const auto known = m_calendars.find(e_source_get_uid(source.get()));
        const std::string address = known == m_calendars.end() ? std::string() : known->second->address();
        accounts.calendars.push_back(describeCalendar(m_registry.get(), source.get(), address));
    }
    return accounts;
}

void EdsSession::followCalendars(const std::vector<GlibObject<ESource>> &sources)
{
    std::map<std::string, std::unique_ptr<EdsCalendar>> calendars;
    for (const GlibObject<ESource> &source : sources) {
        std::unique_ptr<EdsCalendar> &calendar = calendars[e_source_get_uid(source.get())];
        if (const auto known = m_calendars.find(e_source_get_uid(source.get())); known != m_calendars.end())
            calendar = std::move(known->second);
        else
            calendar =
                std::make_unique<EdsCalendar>(source.get(), m_interval, m_reader, [this] { noteNews(); });
    }
    m_calendars = std::move(calendars);
}

void EdsSession::settle()
{
    m_settle.reset();
    if (m_registry)
        updateAccounts();
    m_reader.settle(hasAll());
}

bool EdsSession::hasAll() const
{
    if (!m_registry)
        return m_hasFailed;
    return m_waitedEnough || std::all_of(m_calendars.begin(), m_calendars.end(),
                                         [](const auto &calendar) { return calendar.second->hasAnswered(); });
}

void EdsSession::reportCredentials(ESource *source, const GError *error)
{
    // A server that can't be reached looks to the library as if it had refused the password.
    const auto fault = error ? faultAfter(error) : SubscriptionFault::needsPassword;
    const bool isAnswer = fault == SubscriptionFault::notFound || fault == SubscriptionFault::refused;
    std::string message = '"' + takeText(e_source_dup_display_name(source));
    message.append(isAnswer ? "\" can't be fetched" : "\" is not signed in");
    if (error)
        message.append(" (").append(error->message).append(1, ')');
    if (!isAnswer)
        message.append("; if it wants a password, the desktop's calendar or its online accounts ask for it");
    if (m_credentialsAsked.insert(message).second)
        m_reader.report(message);
}

} // namespace mivora
