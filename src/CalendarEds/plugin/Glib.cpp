#include "CalendarEds/plugin/Glib.h"

#include <algorithm>
#include <new>
#include <utility>

namespace mivora {

namespace {

struct Waiting
{
    GlibObject<GCancellable> owner;
    GlibCalls::Done done;
};

/// A source that is ready when another context has something to run.
struct RelaySource
{
    GSource base;
    GlibRelay::Context context;
};

GMainContext *contextOf(GSource *source)
{
    return reinterpret_cast<RelaySource *>(source)->context.get();
}

gboolean prepare(GSource *source, gint *timeout)
{
    *timeout = -1;
    return g_main_context_pending(contextOf(source));
}

gboolean check(GSource *source)
{
    return g_main_context_pending(contextOf(source));
}

gboolean dispatch(GSource *source, GSourceFunc, gpointer)
{
    g_main_context_iteration(contextOf(source), FALSE);
    return G_SOURCE_CONTINUE;
}

void finalize(GSource *source)
{
    using Context = GlibRelay::Context;
    reinterpret_cast<RelaySource *>(source)->context.~Context();
}

GSourceFuncs functions{prepare, check, dispatch, finalize, nullptr, nullptr};

/// The descriptor that wakes `context` up: the only one of a context in which nothing but idle sources are.
GPollFD wakeUpOf(GMainContext *context)
{
    GPollFD wakeUp{-1, 0, 0};
    gint timeout = 0;
    if (g_main_context_acquire(context)) {
        g_main_context_query(context, G_MAXINT, &timeout, &wakeUp, 1);
        g_main_context_release(context);
    }
    return wakeUp;
}

} // namespace

GlibSource runLater(std::function<void()> work, std::chrono::milliseconds delay, GMainContext *context)
{
    GlibSource source(g_timeout_source_new(guint(delay.count())));
    g_source_set_callback(
        source.get(),
        [](gpointer data) -> gboolean {
            (*static_cast<std::function<void()> *>(data))();
            return G_SOURCE_REMOVE;
        },
        new std::function<void()>(std::move(work)),
        [](gpointer data) { delete static_cast<std::function<void()> *>(data); });
    g_source_attach(source.get(), context);
    return source;
}

void Retry::start()
{
    using namespace std::chrono_literals;
    const auto now = std::chrono::steady_clock::now();
    if (now - std::exchange(m_last, now) > 5min)
        m_delay = {};
    m_delay = std::clamp<std::chrono::milliseconds>(2 * m_delay, 250ms, 1min);
    m_timer = runLater(m_attempt, m_delay);
}

GlibCalls::~GlibCalls()
{
    g_cancellable_cancel(m_cancellable.get());
}

gpointer GlibCalls::then(Done done) const
{
    return new Waiting{sharedObject(m_cancellable.get()), std::move(done)};
}

void GlibCalls::finish(GObject *source, GAsyncResult *result, gpointer data)
{
    const std::unique_ptr<Waiting> waiting(static_cast<Waiting *>(data));
    if (!g_cancellable_is_cancelled(waiting->owner.get()))
        waiting->done(source, result);
}

void GlibCalls::runInThread(GObject *object, Work work, Done done) const
{
    const GlibObject<GTask> task(g_task_new(object, cancellable(), &finish, then(std::move(done))));
    g_task_set_task_data(task.get(), new Work(std::move(work)),
                         [](gpointer data) { delete static_cast<Work *>(data); });
    g_task_run_in_thread(task.get(), [](GTask *running, gpointer, gpointer data, GCancellable *) {
        (*static_cast<Work *>(data))(running);
    });
}

// It is polled by a context that doesn't own it: GLib has to be told to wake it up nevertheless.
GlibRelay::GlibRelay()
    : m_context(g_main_context_new_with_flags(G_MAIN_CONTEXT_FLAGS_OWNERLESS_POLLING), &g_main_context_unref)
{
}

void GlibRelay::open()
{
    m_source.reset(g_source_new(&functions, sizeof(RelaySource)));
    new (&reinterpret_cast<RelaySource *>(m_source.get())->context) Context(m_context);
    const GPollFD wakeUp = wakeUpOf(m_context.get());
    g_source_add_unix_fd(m_source.get(), wakeUp.fd, GIOCondition(wakeUp.events));
    g_source_attach(m_source.get(), g_main_context_get_thread_default());
}

} // namespace mivora
