#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

namespace mivora {

/// What the session has for windows, and what the user wants of it.
struct SessionWindows
{
    /// $MIVORA_PLATFORM, $MIVORA_PANEL and $QT_QPA_PLATFORM.
    QByteArray platform;
    QByteArray panel;
    QByteArray qtPlatform;
    bool hasX11 = false;
    bool hasWayland = false;
    /// Why panels can't be placed by the Wayland compositor; empty when they can. Asked only when it matters.
    std::function<QString()> layersObstacle;

    /// Those of this process.
    static SessionWindows current();
};

struct WindowSystemChoice
{
    /// As QT_QPA_PLATFORM has it; empty when there is nothing to show windows on.
    QByteArray platform;
    /// For the log.
    QString reason;
};

/// Wayland where its compositor can place the panel, X11 and XWayland elsewhere. A QT_QPA_PLATFORM that names
/// one of the two is for other programs: many have it in their environment. Another one is obeyed.
WindowSystemChoice chooseWindowSystem(const SessionWindows &session);

} // namespace mivora
