#pragma once

#include "KeloPanel/RunningApp.h"
#include "KeloTheme/GlassSurface.h"

#include <QPoint>
#include <memory>
#include <optional>

class QWindow;

namespace kelo {

/// How panels come to be seen.
enum class PanelPlatform {
    /// A window that the window manager leaves alone.
    x11,
    /// A frameless window that the desktop places.
    window,
    /// No window at all: the desktop's notifications.
    notification,
};

/// The platform's way: windows on X11 and XWayland; notifications where only Wayland is spoken, since a
/// client can't place its windows there. MIVORA_PANEL=x11|window|notification overrules.
PanelPlatform panelPlatform();

/// The program whose window is active (EWMH's _NET_ACTIVE_WINDOW); nothing where the desktop doesn't tell.
std::optional<RunningApp> frontmostApp();

/// The window-system side of one panel.
class PanelBackend
{
public:
    virtual ~PanelBackend() = default;

    /// Sets the new, hidden window up.
    virtual void dress(QWindow &window) = 0;
    /// Shows the window with its top left corner at \a origin, without giving it the keyboard.
    virtual void orderFront(QWindow &window, const QPoint &origin, const FloatingFrame &frame) = 0;
    virtual void takeKeyboard(QWindow &window) = 0;
    /// Hides the window; the keyboard goes back to where it was.
    virtual void orderOut(QWindow &window) = 0;

    static std::unique_ptr<PanelBackend> create();
};

} // namespace kelo
