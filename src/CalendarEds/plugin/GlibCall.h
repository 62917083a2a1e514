#pragma once

#include "CalendarEds/plugin/GlibPointers.h"

#include <functional>
#include <gio/gio.h>

namespace mivora {

/// The asynchronous calls of one object: all are cancelled with it, and none comes back afterwards.
class GlibCalls
{
public:
    using Work = std::function<void(GTask *task)>;
    using Done = std::function<void(GObject *source, GAsyncResult *result)>;

    GlibCalls() : m_cancellable(g_cancellable_new()), m_alive(std::make_shared<bool>(true)) {}

    ~GlibCalls();
    GlibCalls(const GlibCalls &) = delete;
    GlibCalls &operator=(const GlibCalls &) = delete;

    /// Hand both of these to a call, with GlibCalls::finish as its callback.
    GCancellable *cancellable() const { return m_cancellable.get(); }

    gpointer then(Done done) const;

    static void finish(GObject *source, GAsyncResult *result, gpointer data);

    /// Runs \a work, which may block, on another thread, and then \a done on this one.
    void runInThread(GObject *object, Work work, Done done) const;

private:
    GlibObject<GCancellable> m_cancellable;
    std::shared_ptr<bool> m_alive;
};

} // namespace mivora
