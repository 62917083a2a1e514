#pragma once

#include "KeloPanel/backends/PanelBackend.h"

namespace kelo {

/// A frameless tool window that asks not to be activated: all that can be asked for without X11.
class PlainPanelBackend final : public PanelBackend
{
public:
    void dress(QWindow &window) override;
    void orderFront(QWindow &window, const QPoint &origin, const FloatingFrame &frame) override;
    void takeKeyboard(QWindow &window) override;
    void orderOut(QWindow &window) override;
};

} // namespace kelo
