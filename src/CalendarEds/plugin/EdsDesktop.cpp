#include "CalendarEds/plugin/EdsSession.h"
#include "CalendarEds/plugin/EdsSubscriptions.h"

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
        inContext([&] { follow(service, interval, reader); });
    }

    SubscriptionAnswer perform(const SubscriptionRequest &request, const std::vector<std::string> &addresses,
                               DesktopInterval interval, DesktopCalendarsReader &reader) override
    {
        SubscriptionAnswer answer;
        inContext([&] {
            if (connect(reader))
                answer = EdsSubscriptions(interval, reader, m_cancellable.get()).perform(request, addresses);
            else
                answer.fault = SubscriptionFault::noStore;
        });
        return answer;
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
        g_cancellable_cancel(m_cancellable.get());
        invoke([this] { g_main_loop_quit(m_loop); });
    }

private:
    void inContext(const std::function<void()> &work) const
    {
        g_main_context_push_thread_default(m_context);
        work();
        // What the last calls left to be done; nothing of it comes back to who made them.
        while (g_main_context_iteration(m_context, FALSE)) {
        }
        g_main_context_pop_thread_default(m_context);
    }

    static GlibObject<GDBusConnection> connect(DesktopCalendarsReader &reader)
    {
        GError *error = nullptr;
        GlibObject<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
        const GlibError owner(error);
        if (bus)
            // Else GLib ends the whole program together with the bus.
            g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
        else
            reader.report(std::string("no session bus: ") + error->message);
        return bus;
    }

    void follow(const std::string &service, DesktopInterval interval, DesktopCalendarsReader &reader)
    {
        const GlibObject<GDBusConnection> bus = connect(reader);
        if (!bus) {
            reader.setAccess(DesktopAccess::unavailable);
            reader.settle(true);
            return;
        }
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
    /// Of perform().
    GlibObject<GCancellable> m_cancellable{g_cancellable_new()};
    /// Only while run() is at work, and on its thread.
    EdsSession *m_session = nullptr;
};

} // namespace

/// The plug-in's object.
class EdsPlugin final : public QObject, public DesktopCalendarsPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.DesktopCalendars/2")
    Q_INTERFACES(mivora::DesktopCalendarsPlugin)

public:
    std::unique_ptr<DesktopCalendars> make() override { return std::make_unique<EdsDesktop>(); }
};

} // namespace mivora

#include "EdsDesktop.moc"
