#include "KeloPanel/backends/PlainPanelBackend.h"

#include <QVariant>
#include <QWindow>

namespace kelo {

void PlainPanelBackend::dress(QWindow &window)
{
    window.setFlags(window.flags() | Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    window.setProperty("_q_showWithoutActivating", QVariant(true));
}

void PlainPanelBackend::orderFront(QWindow &window, const QPoint &origin, const FloatingFrame &frame)
{
    window.setGeometry(QRect(origin, frame.windowSize));
    window.show();
}

void PlainPanelBackend::takeKeyboard(QWindow &window)
{
    window.requestActivate();
}

void PlainPanelBackend::orderOut(QWindow &window)
{
    window.hide();
}

} // namespace kelo
