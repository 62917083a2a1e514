#include "CalendarEds/plugin/GlibTimer.h"

namespace mivora {

void GlibTimer::start(std::chrono::milliseconds delay)
{
    stop();
    m_source = g_timeout_source_new(guint(delay.count()));
    g_source_set_callback(m_source, &GlibTimer::fire, this, nullptr);
    g_source_attach(m_source, g_main_context_get_thread_default());
}

void GlibTimer::stop()
{
    if (!m_source)
        return;
    g_source_destroy(m_source);
    g_source_unref(m_source);
    m_source = nullptr;
}

gboolean GlibTimer::fire(gpointer timer)
{
    auto *self = static_cast<GlibTimer *>(timer);
    self->stop();
    self->m_handler();
    return G_SOURCE_REMOVE;
}

} // namespace mivora
