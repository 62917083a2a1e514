#include "App/WindowSystem.h"

#include "App/CommandLineTexts.h"

#include <QFileInfo>
#include <xcb/xcb.h>

namespace mivora {

namespace {

bool reachesX11()
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    const bool reaches = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return reaches;
}

/// The socket's name is absolute or one of the runtime folder (wl_display_connect(3)).
bool reachesWayland(const QString &name)
{
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QFileInfo::exists(name.startsWith(QLatin1Char('/')) ? name : folder + QLatin1Char('/') + name);
}

} // namespace

// Each is tried, since Qt aborts the program when it can't connect.
QByteArray findWindowSystem()
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return qgetenv("QT_QPA_PLATFORM");
    if (!qEnvironmentVariableIsEmpty("DISPLAY") && reachesX11())
        return "xcb";
    const QString wayland = qEnvironmentVariable("WAYLAND_DISPLAY");
    return !wayland.isEmpty() && reachesWayland(wayland) ? "wayland" : "";
}

QString missingDisplayText()
{
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        if (const QString name = qEnvironmentVariable(variable); !name.isEmpty())
            return CommandLineTexts::tr("the display \"%1\" can't be reached").arg(name);
    }
    return CommandLineTexts::tr("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
}

} // namespace mivora
