#include "CalendarEds/plugin/EdsSession.h"

#include <QObject>

namespace mivora {

namespace {

/// The thread-safe side of a session: a main context of its own, that other threads hand work to.
class EdsDesktop final : public DesktopCalendars
{
public:
    EdsDesktop() : m_context(g_main_context_new()), m_loop(g_main_loop_new(m_context, FALSE)) {}

    ~EdsDesktop() override
    {
        g_main_loop_unref(m_loop);
        g_main_context_unref(m_context);
    }

    EdsDesktop(const EdsDesktop &) = delete;
    EdsDesktop &operator=(const EdsDesktop &) = delete;

    void run(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader) override
    {
        g_main_context_push_thread_default(m_context);
        follow(service, interval, reader);
        // What the last calls left to be done; nothing of it comes back to the session.
        while (g_main_context_iteration(m_context, FALSE)) {
        }
        g_main_context_pop_thread_default(m_context);
    }

    void setInterval(DesktopInterval interval) override
    {
        invoke([this, interval] {
            if (m_session)
                m_session->setInterval(interval);
        });
    }

    void stop() override
    {
        invoke([this] { g_main_loop_quit(m_loop); });
    }

private:
    void follow(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader)
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
        // What other threads asked for by now waits in the context, stop() too.
        g_main_loop_run(m_loop);
        m_session = nullptr;
    }

    void invoke(std::function<void()> work) const
    {
        g_source_unref(runLater(std::move(work), {}, m_context).release());
    }

    GMainContext *m_context;
    GMainLoop *m_loop;
    /// Only while run() is at work, and on its thread.
    EdsSession *m_session = nullptr;
};

} // namespace

/// The plug-in's object.
class EdsPlugin final : public QObject, public DesktopCalendarsPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.DesktopCalendars/1")
    Q_INTERFACES(mivora::DesktopCalendarsPlugin)

public:
    std::unique_ptr<DesktopCalendars> make() override { return std::make_unique<EdsDesktop>(); }
};

} // namespace mivora

#include "EdsDesktop.moc"
