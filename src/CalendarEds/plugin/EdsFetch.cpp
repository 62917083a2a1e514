#include "CalendarEds/plugin/EdsFetch.h"

#include "CalendarEds/plugin/EdsObjects.h"

namespace mivora {

namespace {

using enum SubscriptionFault;

/// Opens without waiting for a server on the net.
constexpr guint32 noWaiting = G_MAXUINT32;
/// What went wrong is told by another process than what was fetched, and may come after it.
constexpr std::chrono::milliseconds timeForFailures{1200};

/// What a call to the server failed of.
SubscriptionFault faultOfCall(const GError *error)
{
    const bool isOffline = g_error_matches(error, E_CLIENT_ERROR, E_CLIENT_ERROR_REPOSITORY_OFFLINE) ||
                           g_error_matches(error, E_CLIENT_ERROR, E_CLIENT_ERROR_OFFLINE_UNAVAILABLE);
    return isOffline ? unreachable : storeSilent;
}

} // namespace

SubscriptionFault faultAfter(const GError *error)
{
    if (!error || error->domain != E_SOUP_SESSION_ERROR)
        return unreachable;
    switch (error->code) {
    case 404:
    case 410:
        return notFound;
    case 401:
    case 403:
    case 407:
        return needsPassword;
    }
    return refused;
}

EdsFetch::EdsFetch(ESourceRegistry *registry, ESource *source, bool isNew, DesktopInterval interval,
                   DesktopCalendarsReader &reader, std::function<void()> onDone)
    : m_registry(sharedObject(registry)), m_source(sharedObject(source)), m_isNew(isNew),
      m_interval(interval), m_reader(reader), m_onDone(std::move(onDone))
{
    const auto credentials = +[](ESourceRegistry *, ESource *of, ESourceCredentialsReason reason,
                                 const gchar *, GTlsCertificateFlags, const GError *error, gpointer self) {
        if (auto *fetch = static_cast<EdsFetch *>(self); e_source_equal(of, fetch->m_source.get()))
            fetch->handleCredentials(reason, error);
    };
    g_signal_connect(registry, "credentials-required", G_CALLBACK(credentials), this);
    e_cal_client_connect(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, noWaiting, m_calls.cancellable(),
                         &GlibCalls::finish, then(&EdsFetch::handleClient));
}

EdsFetch::~EdsFetch()
{
    g_signal_handlers_disconnect_by_data(m_registry.get(), this);
    if (m_client)
        g_signal_handlers_disconnect_by_data(m_client.get(), this);
}

SubscriptionFault EdsFetch::fault() const
{
    if (m_fault)
        return *m_fault;
    if (m_isConnected)
        return unfinished;
    const bool isConnecting =
        e_source_get_connection_status(m_source.get()) == E_SOURCE_CONNECTION_STATUS_CONNECTING;
    return m_client || isConnecting ? slow : storeSilent;
}

gpointer EdsFetch::then(Answered answered)
{
    return m_calls.then(
        [this, answered](GObject *object, GAsyncResult *result) { (this->*answered)(object, result); });
}

void EdsFetch::handleClient(GObject *, GAsyncResult *result)
{
    GError *error = nullptr;
    EClient *client = e_cal_client_connect_finish(result, &error);
    const GlibError owner(error);
    if (!client)
        return finish(faultOfCall(error));
    m_client.reset(E_CAL_CLIENT(client));
    // It was fetched, and couldn't be read.
    const auto fail =
        +[](EClient *, const gchar *, gpointer self) { static_cast<EdsFetch *>(self)->finish(notACalendar); };
    g_signal_connect(client, "backend-error", G_CALLBACK(fail), this);
    if (m_isNew)
        askObjects();
    else
        refresh();
}

void EdsFetch::refresh()
{
    m_isNew = false;
    e_client_refresh(E_CLIENT(m_client.get()), m_calls.cancellable(), &GlibCalls::finish,
                     then(&EdsFetch::handleRefresh));
}

void EdsFetch::handleRefresh(GObject *client, GAsyncResult *result)
{
    GError *error = nullptr;
    e_client_refresh_finish(E_CLIENT(client), result, &error);
    const GlibError owner(error);
    if (error)
        finish(faultOfCall(error));
    else
        askObjects();
}

void EdsFetch::askObjects()
{
    m_isConnected = true;
    // The server answers this when the calendar has been fetched.
    e_cal_client_get_object_list(m_client.get(), queryFor(m_interval).c_str(), m_calls.cancellable(),
                                 &GlibCalls::finish, then(&EdsFetch::handleObjects));
}

void EdsFetch::handleObjects(GObject *client, GAsyncResult *result)
{
    GError *error = nullptr;
    GSList *components = nullptr;
    e_cal_client_get_object_list_finish(E_CAL_CLIENT(client), result, &components, &error);
    const GlibError owner(error);
    if (error)
        return finish(faultOfCall(error));
    const bool isEmpty = !components;
    take(components);
    g_slist_free_full(components, g_object_unref);
    if (m_isNew && !isEmpty)
        return finish(none);
    // Another program may have had it opened before, and been told what is wrong with it.
    if (m_isNew)
        return refresh();
    m_quiet = runLater([this] { finish(none); }, timeForFailures);
}

void EdsFetch::take(const GSList *components)
{
    const std::string id = e_source_get_uid(m_source.get());
    m_reader.putObjects(id, readObjects(components));
    for (const std::string &name : timeZonesIn(components)) {
        ICalTimezone *zone = nullptr;
        // The zone stays the client's.
        e_cal_client_get_timezone_sync(m_client.get(), name.c_str(), &zone, m_calls.cancellable(), nullptr);
        const GlibObject<ICalComponent> definition(zone ? i_cal_timezone_get_component(zone) : nullptr);
        if (definition)
            m_reader.putTimeZone(id, name, takeText(i_cal_component_as_ical_string(definition.get())));
    }
}

void EdsFetch::handleCredentials(ESourceCredentialsReason reason, const GError *error)
{
    if (reason == E_SOURCE_CREDENTIALS_REASON_SSL_FAILED)
        finish(badCertificate);
    else
        finish(reason == E_SOURCE_CREDENTIALS_REASON_ERROR ? faultAfter(error) : needsPassword);
}

void EdsFetch::finish(SubscriptionFault fault)
{
    if (m_fault)
        return;
    m_fault = fault;
    m_onDone();
}

} // namespace mivora
