#include "CalendarEds/plugin/GlibCall.h"

namespace mivora {

namespace {

struct Waiting
{
    std::weak_ptr<bool> owner;
    GlibCalls::Done done;
};

} // namespace

GlibCalls::~GlibCalls()
{
    g_cancellable_cancel(m_cancellable.get());
}

gpointer GlibCalls::then(Done done) const
{
    return new Waiting{m_alive, std::move(done)};
}

void GlibCalls::finish(GObject *source, GAsyncResult *result, gpointer data)
{
    const std::unique_ptr<Waiting> waiting(static_cast<Waiting *>(data));
    if (!waiting->owner.expired())
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

} // namespace mivora
