#include "KeloPanel/backends/PanelBackend.h"

#include "KeloPanel/FloatingPanel.h"
#include "KeloPanel/LayerShell.h"
#include "KeloPanel/backends/LayerPanelBackend.h"
#include "KeloPanel/backends/X11PanelBackend.h"

#include <QVariant>

namespace kelo {

namespace {

/// A frameless tool window that asks not to be activated: all that can be asked for without X11.
class PlainPanelBackend final : public PanelBackend
{
public:
    void prepare(QWindow &window) override
    {
        window.setFlags(window.flags() | Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        window.setProperty("_q_showWithoutActivating", QVariant(true));
    }

    void orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame) override
    {
        window.setGeometry(QRect(position.origin, frame.windowSize));
        window.show();
    }

    void takeKeyboard(QWindow &window) override { window.requestActivate(); }

    void orderOut(QWindow &window) override { window.hide(); }
};

} // namespace

bool PanelBackend::hasKeyboard(const QWindow &window) const
{
    return window.isActive();
}

void PanelBackend::moveBy(QWindow &window, const QPoint &distance)
{
    window.setPosition(window.position() + distance);
}

std::unique_ptr<PanelBackend> PanelBackend::create()
{
    switch (panelPlatform()) {
    case PanelPlatform::x11:
        return std::make_unique<X11PanelBackend>();
    case PanelPlatform::layers:
        return std::make_unique<LayerPanelBackend>(*SessionLayers::get().shell);
    default:
        return std::make_unique<PlainPanelBackend>();
    }
}

} // namespace kelo
