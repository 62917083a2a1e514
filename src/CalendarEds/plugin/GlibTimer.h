#pragma once

#include <chrono>
#include <functional>
#include <glib.h>

namespace mivora {

/// Fires once, in the thread's own main context.
class GlibTimer
{
public:
    explicit GlibTimer(std::function<void()> handler) : m_handler(std::move(handler)) {}

    ~GlibTimer() { stop(); }

    GlibTimer(const GlibTimer &) = delete;
    GlibTimer &operator=(const GlibTimer &) = delete;

    /// Sets it anew when it runs already.
    void start(std::chrono::milliseconds delay);
    void stop();

    bool isRunning() const { return m_source; }

private:
    static gboolean fire(gpointer timer);

    std::function<void()> m_handler;
    GSource *m_source = nullptr;
};

} // namespace mivora
