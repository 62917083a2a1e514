#include "KeloPanel/backends/LayerPanelBackend.h"

#include "Platform/linux/WaylandGlobals.h"

#include <QMouseEvent>
#include <QWindow>
#include <utility>

namespace kelo {

namespace {

// KWin leaves the keyboard to a surface that it was given to, until that one goes.
bool isKeyboardKept()
{
    return mivora::waylandGlobals().contains("org_kde_plasma_shell");
}

} // namespace

LayerPanelBackend::LayerPanelBackend(LayerShell &shell) : m_shell(shell) {}

void LayerPanelBackend::prepare(QWindow &window)
{
    window.setFlags(window.flags() | Qt::FramelessWindowHint);
    m_shell.prepare(window, QStringLiteral("mivora-panel"));
    window.installEventFilter(this);
}

void LayerPanelBackend::orderFront(QWindow &window, const PanelPosition &position, const FloatingFrame &frame)
{
    const int distance = int(position.place.distance);
    m_edges = position.place.edges;
    m_distance = {distance, distance, distance, distance};
    window.resize(frame.windowSize);
    // Of the surface's input alone.
    window.setMask(GlassSurface::cardRegion(frame));
    m_shell.place(window, m_edges, m_distance);
    setHasKeyboard(window, false);
    window.show();
}

void LayerPanelBackend::takeKeyboard(QWindow &window)
{
    setHasKeyboard(window, true);
}

void LayerPanelBackend::orderOut(QWindow &window)
{
    window.hide();
}

// Once the surface is let go. Some compositors tell the pointer's place from where it was taken, others from
// where it is: a surface that moves meanwhile would run away from the pointer.
void LayerPanelBackend::moveBy(QWindow &, const QPoint &distance)
{
    m_dragged = distance;
}

bool LayerPanelBackend::eventFilter(QObject *watched, QEvent *event)
{
    auto &window = static_cast<QWindow &>(*watched);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        // Nobody would tell that a finger has left.
        if (static_cast<QMouseEvent *>(event)->deviceType() != QInputDevice::DeviceType::TouchScreen)
            takeKeyboard(window);
        break;
    case QEvent::MouseButtonRelease:
        m_distance += QMargins(m_dragged.x(), m_dragged.y(), -m_dragged.x(), -m_dragged.y());
        m_dragged = {};
        m_shell.place(window, m_edges, m_distance);
        break;
    case QEvent::Leave:
        pointerLeft(window);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void LayerPanelBackend::pointerLeft(QWindow &window)
{
    setHasKeyboard(window, false);
    if (isKeyboardKept() && window.isActive()) {
        window.hide();
        window.show();
    }
}

void LayerPanelBackend::setHasKeyboard(QWindow &window, bool has)
{
    if (std::exchange(m_hasKeyboard, has) != has)
        m_shell.setHasKeyboard(window, has);
}

} // namespace kelo
