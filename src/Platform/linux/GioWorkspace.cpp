#include "Platform/linux/GioWorkspace.h"

#include "Platform/linux/LateGio.h"
#include "Platform/linux/SystemSettingsLinks.h"

#include <QCoreApplication>
#include <algorithm>
#include <array>
#include <memory>

// GIO uses "signals" as a name.
#undef signals
#include <gio/gio.h>

namespace mivora {

namespace {

constexpr std::array meetingSchemes{QLatin1String("https"), QLatin1String("zoommtg"),
                                    QLatin1String("msteams")};

/// Only schemes that are spelt as usual are known, and those need no case folding elsewhere.
QString schemeOf(const QString &url)
{
    return url.left(std::max<qsizetype>(url.indexOf(QLatin1Char(':')), 0)).toLower();
}

bool isMeetingScheme(const QString &scheme)
{
    return std::find(meetingSchemes.begin(), meetingSchemes.end(), scheme) != meetingSchemes.end();
}

struct Unref
{
    void operator()(void *object) const { KELO_GIO(g_object_unref)(object); }
};

void launch(GTask *task, void *, void *uri, GCancellable *)
{
    const bool launched =
        KELO_GIO(g_app_info_launch_default_for_uri)(static_cast<const char *>(uri), nullptr, nullptr);
    KELO_GIO(g_task_return_boolean)(task, launched);
}

/// Runs on the main thread, from the event loop.
void finished(GObject *, GAsyncResult *result, void *data)
{
    const std::unique_ptr<Workspace::Opened> done(static_cast<Workspace::Opened *>(data));
    const bool opened = KELO_GIO(g_task_propagate_boolean)(reinterpret_cast<GTask *>(result), nullptr);
    if (*done)
        (*done)(opened);
}

void answerLater(Workspace::Opened done, bool opened)
{
    const auto answer = [done = std::move(done), opened] {
        if (done)
            done(opened);
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), answer, Qt::QueuedConnection);
}

} // namespace

void GioWorkspace::open(const QString &url, Opened done)
{
    const QString scheme = schemeOf(url);
    if (scheme == systemSettingsScheme)
        return answerLater(std::move(done), openSystemSettings(url));
    if (!isMeetingScheme(scheme) || !KELO_GIO(g_task_new))
        return answerLater(std::move(done), false);
    const std::unique_ptr<GTask, Unref> task(
        KELO_GIO(g_task_new)(nullptr, nullptr, finished, new Opened(std::move(done))));
    KELO_GIO(g_task_set_task_data)(task.get(), g_strdup(url.toUtf8().constData()), g_free);
    KELO_GIO(g_task_run_in_thread)(task.get(), launch);
}

bool GioWorkspace::hasHandler(const QString &scheme) const
{
    const auto find = KELO_GIO(g_app_info_get_default_for_uri_scheme);
    if (!find)
        return false;
    const std::unique_ptr<GAppInfo, Unref> handler(find(scheme.toLower().toUtf8().constData()));
    // GIO itself passes over an entry whose program is missing.
    return handler != nullptr;
}

} // namespace mivora
