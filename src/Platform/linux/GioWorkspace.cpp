#include "Platform/linux/GioWorkspace.h"

#include "Platform/linux/LateGio.h"

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <array>
#include <memory>
#include <optional>

// GIO uses "signals" as a name.
#undef signals
#include <gio/gio.h>

namespace mivora {

namespace {

/// The scheme of links into the system settings.
constexpr QLatin1String systemSettingsScheme("x-apple.systempreferences");
constexpr QLatin1String calendarPrivacy(calendarPrivacyLink);
constexpr QLatin1String internetAccounts(internetAccountsLink);

struct Panel
{
    QLatin1String desktop;
    QLatin1String link;
    QLatin1String command;
};

/// Arguments are separated by blanks. A desktop without a panel for a link shows its settings as a whole.
constexpr std::array panels{
    Panel{QLatin1String("GNOME"), calendarPrivacy, QLatin1String("gnome-control-center applications")},
    Panel{QLatin1String("GNOME"), internetAccounts, QLatin1String("gnome-control-center online-accounts")},
    Panel{QLatin1String("KDE"), calendarPrivacy, QLatin1String("systemsettings")},
    Panel{QLatin1String("KDE"), internetAccounts, QLatin1String("systemsettings kcm_kaccounts")},
    Panel{QLatin1String("XFCE"), calendarPrivacy, QLatin1String("xfce4-settings-manager")},
    Panel{QLatin1String("XFCE"), internetAccounts, QLatin1String("xfce4-settings-manager")},
};

std::optional<QStringList> commandOn(const QString &desktop, const QString &link)
{
    for (const Panel &panel : panels) {
        if (panel.link == link && desktop.compare(panel.desktop, Qt::CaseInsensitive) == 0)
            return QString(panel.command).split(QLatin1Char(' '));
    }
    return std::nullopt;
}

/// The command, program first, that shows on the desktop `desktops` (names separated by colons, the most
/// specific first) what the link leads to.
std::optional<QStringList> systemSettingsCommand(const QString &link, const QString &desktops)
{
    for (const QString &desktop : desktops.split(QLatin1Char(':'))) {
        if (auto command = commandOn(desktop, link))
            return command;
    }
    return std::nullopt;
}

/// False when the running desktop has nothing for the link, or it could not be started.
bool openSystemSettings(const QString &link)
{
    auto command = systemSettingsCommand(link, qEnvironmentVariable("XDG_CURRENT_DESKTOP"));
    if (!command)
        return false;
    const QString program = command->takeFirst();
    return QProcess::startDetached(program, *command);
}

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
