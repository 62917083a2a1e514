#pragma once

#include "KeloPanel/Screens.h"
#include "KeloTheme/GlassSurface.h"

#include <QPoint>
#include <memory>

class QWindow;

namespace kelo {

/// Where a panel is to appear: the top left corner of its window, for who can choose that, and what it comes
/// from.
struct PanelPosition
{
    QPoint origin;
    PanelPlace place;
};

/// The window-system side of one panel.
class PanelBackend
{
public:
    virtual ~PanelBackend() = default;

    /// Gives the new, hidden window the flags and properties of a panel.
    virtual void prepare(QWindow &window) = 0;
    /// Shows the window without giving it the keyboard.
    virtual void orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame) = 0;
    virtual void takeKeyboard(QWindow &window) = 0;
    /// Whether what the user types goes to the window.
    virtual bool hasKeyboard(const QWindow &window) const;
    /// Hides the window; the keyboard goes back to where it was.
    virtual void orderOut(QWindow &window) = 0;

    virtual void moveBy(QWindow &window, const QPoint &distance);

    /// The backend for `panelPlatform`.
    static std::unique_ptr<PanelBackend> create();
};

} // namespace kelo
