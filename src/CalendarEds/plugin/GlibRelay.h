#pragma once

#include <glib.h>
#include <memory>

namespace mivora {

/// A main context for a call on another thread: what the call leaves in it runs on the owner's thread.
///
/// Libraries send their signals to the default context of the thread that called them. A thread can't take
/// the owner's context as its own, because a context belongs to one thread at a time.
class GlibRelay
{
public:
    using Context = std::shared_ptr<GMainContext>;

    GlibRelay();
    ~GlibRelay();
    GlibRelay(const GlibRelay &) = delete;
    GlibRelay &operator=(const GlibRelay &) = delete;

    /// For one thread, to be its default for a while. Nothing runs until open().
    const Context &context() const { return m_context; }

    /// Runs what is in the context, and what is to come, in this thread's own. The other thread is done with
    /// it.
    void open();

private:
    Context m_context;
    GSource *m_source = nullptr;
};

} // namespace mivora
