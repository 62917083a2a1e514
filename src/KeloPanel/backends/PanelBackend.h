#pragma once

#include "KeloTheme/GlassSurface.h"

#include <QPoint>
#include <memory>

class QWindow;

namespace kelo {

/// The window-system side of one panel.
class PanelBackend
{
public:
    virtual ~PanelBackend() = default;

    /// Gives the new, hidden window the flags and properties of a panel.
    virtual void prepare(QWindow &window) = 0;
    /// Shows the window with its top left corner at `origin`, without giving it the keyboard.
    virtual void orderFront(QWindow &window, const QPoint &origin, const FloatingFrame &frame) = 0;
    virtual void takeKeyboard(QWindow &window) = 0;
    /// Hides the window; the keyboard goes back to where it was.
    virtual void orderOut(QWindow &window) = 0;

    /// The backend for `panelPlatform`.
    static std::unique_ptr<PanelBackend> create();
};

} // namespace kelo
