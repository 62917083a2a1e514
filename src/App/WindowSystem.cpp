#include "App/WindowSystem.h"

#include "KeloPanel/LayerShell.h"

#include <QtGlobal>

namespace mivora {

SessionWindows SessionWindows::current()
{
    return {
        .platform = qgetenv("MIVORA_PLATFORM"),
        .panel = qgetenv("MIVORA_PANEL"),
        .qtPlatform = qgetenv("QT_QPA_PLATFORM"),
        .hasX11 = !qEnvironmentVariableIsEmpty("DISPLAY"),
        .hasWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"),
        .layersObstacle = [] { return kelo::SessionLayers::get().obstacle; },
    };
}

WindowSystemChoice chooseWindowSystem(const SessionWindows &session)
{
    if (!session.platform.isEmpty())
        return {session.platform, QStringLiteral("MIVORA_PLATFORM names it")};
    if (!session.qtPlatform.isEmpty() && !session.qtPlatform.startsWith("wayland") &&
        !session.qtPlatform.startsWith("xcb"))
        return {session.qtPlatform, QStringLiteral("QT_QPA_PLATFORM names it")};
    if (!session.hasWayland)
        return {session.hasX11 ? "xcb" : QByteArray(), QStringLiteral("this is an X11 session")};
    if (!session.hasX11)
        return {"wayland", QStringLiteral("there is no XWayland")};
    if (session.panel == "x11")
        return {"xcb;wayland", QStringLiteral("MIVORA_PANEL wants X11")};
    const QString obstacle = session.layersObstacle();
    if (obstacle.isEmpty())
        return {"wayland;xcb", QStringLiteral("the compositor can place the panel")};
    return {"xcb;wayland", QStringLiteral("panels can't be placed on Wayland here: ") + obstacle};
}

} // namespace mivora
