#pragma once

#include <chrono>
#include <functional>
#include <gio/gio.h>
#include <memory>
#include <string>

/// Owners of what GLib counts and frees, and its callbacks as functions.
namespace mivora {

struct ObjectRelease
{
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// Owns one reference.
template<typename Object> using GlibObject = std::unique_ptr<Object, ObjectRelease>;

/// One more reference to `object`.
template<typename Object> GlibObject<Object> sharedObject(Object *object)
{
    return GlibObject<Object>(static_cast<Object *>(g_object_ref(object)));
}

struct ErrorRelease
{
    void operator()(GError *error) const { g_error_free(error); }
};

using GlibError = std::unique_ptr<GError, ErrorRelease>;

/// Takes `text`, which may be null, and frees it.
inline std::string takeText(gchar *text)
{
    const std::unique_ptr<gchar, decltype(&g_free)> owner(text, &g_free);
    return text ? text : "";
}

struct SourceRelease
{
    void operator()(GSource *source) const
    {
        g_source_destroy(source);
        g_source_unref(source);
    }
};

/// A source of events, which comes to nothing with its owner.
using GlibSource = std::unique_ptr<GSource, SourceRelease>;

/// Runs `work` once in `context`, by default the thread's own, after `delay`.
GlibSource runLater(std::function<void()> work, std::chrono::milliseconds delay,
                    GMainContext *context = g_main_context_get_thread_default());

/// Makes an attempt again that failed: after a moment at first, then after twice the time with each failure,
/// up to a minute. After a good while without failure it begins anew.
class Retry
{
public:
    explicit Retry(std::function<void()> attempt) : m_attempt(std::move(attempt)) {}

    /// To be called with each failure.
    void start();

private:
    std::function<void()> m_attempt;
    std::chrono::steady_clock::time_point m_last{};
    std::chrono::milliseconds m_delay{};
    GlibSource m_timer;
};

/// Asynchronous calls: all are cancelled with their owner, and none comes back afterwards.
class GlibCalls
{
public:
    using Work = std::function<void(GTask *task)>;
    using Done = std::function<void(GObject *source, GAsyncResult *result)>;

    GlibCalls() : m_cancellable(g_cancellable_new()) {}

    ~GlibCalls();
    GlibCalls(const GlibCalls &) = delete;
    GlibCalls &operator=(const GlibCalls &) = delete;

    /// Hand both of these to a call, with GlibCalls::finish as its callback.
    GCancellable *cancellable() const { return m_cancellable.get(); }

    gpointer then(Done done) const;

    static void finish(GObject *source, GAsyncResult *result, gpointer data);

    /// Runs `work`, which may block, on another thread, and then `done` on this one.
    void runInThread(GObject *object, Work work, Done done) const;

private:
    GlibObject<GCancellable> m_cancellable;
};

/// A main context for a call on another thread: what the call leaves in it runs on the owner's thread.
///
/// Libraries send their signals to the default context of the thread that called them. A thread can't take
/// the owner's context as its own, because a context belongs to one thread at a time.
class GlibRelay
{
public:
    using Context = std::shared_ptr<GMainContext>;

    GlibRelay();

    /// For one thread, to be its default for a while. Nothing runs until open().
    const Context &context() const { return m_context; }

    /// Runs what is in the context, and what is to come, in this thread's own. The other thread is done with
    /// it.
    void open();

private:
    Context m_context;
    GlibSource m_source;
};

} // namespace mivora
