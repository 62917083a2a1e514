#include "CalendarEds/plugin/EdsCalendar.h"

#include "CalendarEds/plugin/EdsObjects.h"

namespace mivora {

namespace {

/// Opens without waiting for a server on the net: what is known of it is there at once.
constexpr guint32 withoutWaiting = G_MAXUINT32;

/// The names of `ids`, a list of ECalComponentId.
std::vector<ObjectName> readNames(const GSList *ids)
{
    std::vector<ObjectName> names;
    for (; ids; ids = ids->next) {
        const auto *id = static_cast<const ECalComponentId *>(ids->data);
        const gchar *recurrenceID = e_cal_component_id_get_rid(id);
        names.push_back({e_cal_component_id_get_uid(id), recurrenceID ? recurrenceID : ""});
    }
    return names;
}

} // namespace

EdsCalendar::EdsCalendar(ESource *source, DesktopInterval interval, DesktopCalendarsReader &reader,
                         std::function<void()> onNews)
    : m_source(sharedObject(source)), m_interval(interval), m_reader(reader), m_onNews(std::move(onNews)),
      m_id(e_source_get_uid(source)), m_retry([this] { open(); })
{
    open();
}

EdsCalendar::~EdsCalendar()
{
    close();
}

void EdsCalendar::setInterval(DesktopInterval interval)
{
    m_interval = interval;
    if (m_client)
        makeView();
}

void EdsCalendar::open()
{
    m_calls = std::make_unique<GlibCalls>();
    e_cal_client_connect(m_source.get(), E_CAL_CLIENT_SOURCE_TYPE_EVENTS, withoutWaiting,
                         m_calls->cancellable(), &GlibCalls::finish,
                         m_calls->then([this](GObject *, GAsyncResult *result) { handleClient(result); }));
}

void EdsCalendar::handleClient(GAsyncResult *result)
{
    GError *error = nullptr;
    EClient *client = e_cal_client_connect_finish(result, &error);
    const GlibError owner(error);
    if (!client)
        return fail("can't be opened", error);
    m_client.reset(E_CAL_CLIENT(client));
    g_signal_connect(client, "backend-died", G_CALLBACK(+[](EClient *, gpointer self) {
                         static_cast<EdsCalendar *>(self)->fail("lost its server", nullptr);
                     }),
                     this);
    askAddress();
    makeView();
}

void EdsCalendar::askAddress()
{
    const auto take = [this](GObject *client, GAsyncResult *result) {
        gchar *address = nullptr;
        if (!e_client_get_backend_property_finish(E_CLIENT(client), result, &address, nullptr))
            return;
        m_address = takeText(address);
        m_onNews();
    };
    e_client_get_backend_property(E_CLIENT(m_client.get()), E_CAL_BACKEND_PROPERTY_CAL_EMAIL_ADDRESS,
                                  m_calls->cancellable(), &GlibCalls::finish, m_calls->then(take));
}

void EdsCalendar::makeView()
{
    // The old view goes on until the new one is there.
    m_viewCalls = std::make_unique<GlibCalls>();
    e_cal_client_get_view(m_client.get(), queryFor(m_interval).c_str(), m_viewCalls->cancellable(),
                          &GlibCalls::finish,
                          m_viewCalls->then([this](GObject *, GAsyncResult *result) { handleView(result); }));
}

void EdsCalendar::handleView(GAsyncResult *result)
{
    GError *error = nullptr;
    ECalClientView *view = nullptr;
    const bool isThere = e_cal_client_get_view_finish(m_client.get(), result, &view, &error);
    const GlibError owner(error);
    if (!isThere)
        return fail("can't be followed", error);
    closeView();
    m_view.reset(view);
    followView();
    startView();
}

void EdsCalendar::followView()
{
    using Objects = void (*)(ECalClientView *, const GSList *, gpointer);
    const Objects put = [](ECalClientView *, const GSList *objects, gpointer self) {
        static_cast<EdsCalendar *>(self)->handleObjects(objects);
    };
    const Objects remove = [](ECalClientView *, const GSList *ids, gpointer self) {
        static_cast<EdsCalendar *>(self)->handleRemoved(ids);
    };
    const auto complete = +[](ECalClientView *, const GError *failure, gpointer self) {
        static_cast<EdsCalendar *>(self)->handleComplete(failure);
    };
    ECalClientView *view = m_view.get();
    g_signal_connect(view, "objects-added", G_CALLBACK(put), this);
    g_signal_connect(view, "objects-modified", G_CALLBACK(put), this);
    g_signal_connect(view, "objects-removed", G_CALLBACK(remove), this);
    g_signal_connect(view, "complete", G_CALLBACK(complete), this);
}

void EdsCalendar::startView()
{
    m_reader.startLoad(m_id);
    m_relay = std::make_unique<GlibRelay>();
    // The library waits for the server here, which may hang. The thread's default context of this call is
    // where the view's signals come.
    const auto start = [context = m_relay->context()](GTask *task) {
        GError *error = nullptr;
        g_main_context_push_thread_default(context.get());
        e_cal_client_view_start(E_CAL_CLIENT_VIEW(g_task_get_source_object(task)), &error);
        g_main_context_pop_thread_default(context.get());
        if (error)
            g_task_return_error(task, error);
        else
            g_task_return_boolean(task, TRUE);
    };
    m_viewCalls->runInThread(G_OBJECT(m_view.get()), start, [this](GObject *, GAsyncResult *result) {
        GError *error = nullptr;
        g_task_propagate_boolean(G_TASK(result), &error);
        const GlibError owner(error);
        if (error)
            return fail("can't be followed", error);
        m_relay->open();
    });
}

void EdsCalendar::handleObjects(const GSList *components)
{
    m_reader.putObjects(m_id, readObjects(components));
    for (const std::string &zone : timeZonesIn(components))
        askTimeZone(zone);
    m_onNews();
}

void EdsCalendar::handleRemoved(const GSList *ids)
{
    m_reader.removeObjects(m_id, readNames(ids));
    m_onNews();
}

void EdsCalendar::handleComplete(const GError *error)
{
    if (error)
        return fail("can't be read", error);
    m_reported.clear();
    m_reader.finishLoad(m_id);
    m_hasAnswered = true;
    m_onNews();
}

void EdsCalendar::askTimeZone(const std::string &id)
{
    if (!m_zones.insert(id).second)
        return;
    e_cal_client_get_timezone(
        m_client.get(), id.c_str(), m_calls->cancellable(), &GlibCalls::finish,
        m_calls->then([this, id](GObject *, GAsyncResult *result) { takeTimeZone(id, result); }));
}

void EdsCalendar::takeTimeZone(const std::string &id, GAsyncResult *result)
{
    ICalTimezone *zone = nullptr;
    // The zone stays the client's.
    if (e_cal_client_get_timezone_finish(m_client.get(), result, &zone, nullptr) && zone) {
        const GlibObject<ICalComponent> definition(i_cal_timezone_get_component(zone));
        if (definition)
            m_reader.putTimeZone(m_id, id, takeText(i_cal_component_as_ical_string(definition.get())));
    }
    m_onNews();
}

void EdsCalendar::fail(const std::string &what, const GError *error)
{
    std::string message = "the calendar \"" + takeText(e_source_dup_display_name(m_source.get()));
    message.append("\" ").append(what);
    if (error)
        message.append(": ").append(error->message);
    if (message != m_reported)
        m_reader.report(message);
    m_reported = std::move(message);
    m_hasAnswered = true;
    close();
    m_retry.start();
    m_onNews();
}

void EdsCalendar::close()
{
    closeView();
    m_viewCalls.reset();
    m_calls.reset();
    m_zones.clear();
    if (m_client)
        g_signal_handlers_disconnect_by_data(m_client.get(), this);
    m_client.reset();
}

void EdsCalendar::closeView()
{
    if (m_view)
        g_signal_handlers_disconnect_by_data(m_view.get(), this);
    m_view.reset();
    m_relay.reset();
}

} // namespace mivora
