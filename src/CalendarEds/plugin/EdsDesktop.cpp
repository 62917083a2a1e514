#include "CalendarEds/plugin/EdsDesktop.h"

#include "CalendarEds/plugin/EdsSession.h"

namespace mivora {

EdsDesktop::EdsDesktop() : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE)) {}

EdsDesktop::~EdsDesktop()
{
    g_main_loop_unref(m_loop);
    g_main_context_unref(m_context);
}

void EdsDesktop::run(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader)
{
    g_main_context_push_thread_default(m_context);
    follow(service, interval, reader);
    // What the last calls left to be done; nothing of it comes back to the session.
    while (g_main_context_iteration(m_context, FALSE)) {
    }
    g_main_context_pop_thread_default(m_context);
}

void EdsDesktop::follow(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader)
{
    GError *error = nullptr;
    const GlibObject<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
    const GlibError owner(error);
    if (!bus) {
        reader.report(std::string("no session bus: ") + error->message);
        reader.setAccess(DesktopAccess::unavailable);
        reader.settle(true);
        return;
    }
    // Else GLib ends the whole program together with the bus.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    EdsSession session(bus.get(), service, interval, reader);
    m_session = &session;
    takeInterval();
    // A stop() from here on leaves work in the context, which ends the loop as soon as it runs.
    g_main_loop_run(m_loop);
    m_session = nullptr;
}

void EdsDesktop::setInterval(DesktopInterval interval)
{
    {
        const std::lock_guard lock(m_mutex);
        m_wantedInterval = interval;
    }
    invoke([](EdsDesktop &desktop) { desktop.takeInterval(); });
}

void EdsDesktop::stop()
{
    invoke([](EdsDesktop &desktop) { g_main_loop_quit(desktop.m_loop); });
}

void EdsDesktop::takeInterval()
{
    std::optional<DesktopInterval> interval;
    {
        const std::lock_guard lock(m_mutex);
        std::swap(interval, m_wantedInterval);
    }
    if (interval && m_session)
        m_session->setInterval(*interval);
}

void EdsDesktop::invoke(void (*function)(EdsDesktop &desktop))
{
    struct Call
    {
        EdsDesktop *desktop;
        void (*function)(EdsDesktop &desktop);
    };

    // Always as a source of the context: g_main_context_invoke() might run it here and now.
    GSource *source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(
        source,
        [](gpointer data) -> gboolean {
            const auto *call = static_cast<Call *>(data);
            call->function(*call->desktop);
            return G_SOURCE_REMOVE;
        },
        new Call{this, function}, [](gpointer data) { delete static_cast<Call *>(data); });
    g_source_attach(source, m_context);
    g_source_unref(source);
}

} // namespace mivora
