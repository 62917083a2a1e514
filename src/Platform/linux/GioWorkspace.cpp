#include "Platform/linux/GioWorkspace.h"

#include "Platform/Activation.h"
#include "Platform/linux/Gio.h"

#include <QCoreApplication>
#include <QFuture>
#include <QProcess>
#include <QPromise>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <thread>

namespace mivora {

namespace {

constexpr const char *activationVariable = "XDG_ACTIVATION_TOKEN";

/// Tells GIO, on whatever thread it starts a program, what the program may come to the front with: to be put
/// into the environment, into a call over the bus, or into the portal's options. The desktop must know of the
/// start before the program that runs already asks with that token: nothing is started until it was told.
char *startupId(GAppLaunchContext *context, GAppInfo *handler, GList *)
{
    char **environment = KELO_GIO(g_app_launch_context_get_environment)(context);
    char *id = g_strdup(g_environ_getenv(environment, activationVariable));
    g_strfreev(environment);
    const QByteArray name(handler ? KELO_GIO(g_app_info_get_name)(handler) : "");
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [token = QByteArray(id), name] { announceLaunch(token, name); },
        Qt::BlockingQueuedConnection);
    return id;
}

GType launchContextType()
{
    const auto initialize = [](void *type, void *) {
        static_cast<GAppLaunchContextClass *>(type)->get_startup_notify_id = &startupId;
    };
    static const GType type = KELO_GIO(g_type_register_static_simple)(
        KELO_GIO(g_app_launch_context_get_type)(), "MivoraLaunchContext", sizeof(GAppLaunchContextClass),
        initialize, sizeof(GAppLaunchContext), nullptr, GTypeFlags(0));
    return type;
}

/// Null for a program that comes without the user's asking.
GAppLaunchContext *launchContext(const QByteArray &token)
{
    if (token.isEmpty())
        return nullptr;
    auto *context = reinterpret_cast<GAppLaunchContext *>(
        KELO_GIO(g_object_new_with_properties)(launchContextType(), 0, nullptr, nullptr));
    // For programs whose entry promises no startup notification as well: browsers' often don't.
    for (const char *variable : {activationVariable, "DESKTOP_STARTUP_ID"})
        KELO_GIO(g_app_launch_context_setenv)(context, variable, token.constData());
    return context;
}

/// The scheme of links into the system settings.
constexpr QLatin1String systemSettingsScheme("x-apple.systempreferences");
constexpr QLatin1String calendarPrivacy(calendarPrivacyLink);
constexpr QLatin1String internetAccounts(internetAccountsLink);
constexpr QLatin1String calendarProgram(calendarProgramLink);

struct Panel
{
    QLatin1String desktop;
    QLatin1String link;
    QLatin1String command;
};

/// Arguments are separated by blanks. A desktop without a panel for a link shows its settings as a whole; a
/// row without a desktop is for all. Accounts of KDE's own don't reach the desktop's calendars.
constexpr std::array panels{
    Panel{QLatin1String("GNOME"), calendarPrivacy, QLatin1String("gnome-control-center applications")},
    Panel{QLatin1String("GNOME"), internetAccounts, QLatin1String("gnome-control-center online-accounts")},
    Panel{QLatin1String("KDE"), calendarPrivacy, QLatin1String("systemsettings")},
    Panel{QLatin1String("XFCE"), calendarPrivacy, QLatin1String("xfce4-settings-manager")},
    Panel{QLatin1String(), internetAccounts, QLatin1String("gnome-online-accounts-gtk")},
    Panel{QLatin1String(), calendarProgram, QLatin1String("evolution --component=calendar")},
};

/// The command that shows what the link leads to on the running desktop, whose names are separated by colons,
/// the most specific first. Empty when there is nothing, or it isn't installed.
QStringList commandFor(const QString &link)
{
    QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    for (const QString &desktop : desktops << QString())
        for (const Panel &panel : panels) {
            QStringList command = QString(panel.command).split(QLatin1Char(' '));
            if (panel.link == link && desktop.compare(panel.desktop, Qt::CaseInsensitive) == 0 &&
                !QStandardPaths::findExecutable(command.front()).isEmpty())
                return command;
        }
    return {};
}

bool openSystemSettings(const QString &link)
{
    const QStringList command = commandFor(link);
    return !command.isEmpty() && QProcess::startDetached(command.front(), command.mid(1));
}

constexpr std::array meetingSchemes{QLatin1String("https"), QLatin1String("zoommtg"),
                                    QLatin1String("msteams")};

/// Only schemes that are spelt as usual are known, and those need no case folding elsewhere.
QString schemeOf(const QString &url)
{
    return url.left(std::max<qsizetype>(url.indexOf(QLatin1Char(':')), 0)).toLower();
}

void answerLater(Workspace::Opened done, bool opened)
{
    const auto answer = [done = std::move(done), opened] { done(opened); };
    QMetaObject::invokeMethod(QCoreApplication::instance(), answer, Qt::QueuedConnection);
}

} // namespace

void GioWorkspace::open(const QString &url, Opened done)
{
    const QString scheme = schemeOf(url);
    if (scheme == systemSettingsScheme)
        return answerLater(std::move(done), openSystemSettings(url));
    const auto launch = KELO_GIO(g_app_info_launch_default_for_uri);
    if (std::ranges::find(meetingSchemes, scheme) == meetingSchemes.end() || !launch)
        return answerLater(std::move(done), false);
    QPromise<bool> opened;
    opened.future().then(QCoreApplication::instance(), std::move(done));
    // A thread that hangs is left to itself, also when the program ends.
    std::thread([launch, link = url.toUtf8(), token = takeLaunchToken(),
                 opened = std::move(opened)]() mutable {
        opened.start();
        GAppLaunchContext *context = launchContext(token);
        opened.addResult(bool(launch(link.constData(), context, nullptr)));
        if (context)
            KELO_GIO(g_object_unref)(context);
        opened.finish();
    }).detach();
}

bool GioWorkspace::hasHandler(const QString &scheme) const
{
    const auto find = KELO_GIO(g_app_info_get_default_for_uri_scheme);
    if (!find)
        return false;
    // GIO itself passes over an entry whose program is missing.
    GAppInfo *handler = find(scheme.toLower().toUtf8().constData());
    if (handler)
        KELO_GIO(g_object_unref)(handler);
    return handler;
}

bool GioWorkspace::leadsSomewhere(const QString &link) const
{
    return !commandFor(link).isEmpty();
}

} // namespace mivora
