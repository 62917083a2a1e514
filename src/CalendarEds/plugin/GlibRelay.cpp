#include "CalendarEds/plugin/GlibRelay.h"

#include <new>

namespace mivora {

namespace {

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

/// The descriptor that wakes \a context up: the only one of a context in which nothing but idle sources are.
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

// It is polled by a context that doesn't own it: GLib has to be told to wake it up nevertheless.
GlibRelay::GlibRelay()
    : m_context(g_main_context_new_with_flags(G_MAIN_CONTEXT_FLAGS_OWNERLESS_POLLING), &g_main_context_unref)
{
}

GlibRelay::~GlibRelay()
{
    if (!m_source)
        return;
    g_source_destroy(m_source);
    g_source_unref(m_source);
}

void GlibRelay::open()
{
    m_source = g_source_new(&functions, sizeof(RelaySource));
    new (&reinterpret_cast<RelaySource *>(m_source)->context) Context(m_context);
    const GPollFD wakeUp = wakeUpOf(m_context.get());
    g_source_add_unix_fd(m_source, wakeUp.fd, GIOCondition(wakeUp.events));
    g_source_attach(m_source, g_main_context_get_thread_default());
}

} // namespace mivora
