#include "KeloPanel/backends/LayerPanelBackend.h"

#include "Platform/linux/WaylandGlobals.h"

#include <QEvent>
#include <QWindow>

namespace kelo {

namespace {

// KWin gives the keyboard to a surface that begins to take it. Others ask at the press, which would come too
// late.
bool isFocusedWhenItTakesKeys()
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
    setTakesKeyboard(window, false);
    window.show();
}

void LayerPanelBackend::takeKeyboard(QWindow &window)
{
    setTakesKeyboard(window, true);
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
    case QEvent::Enter:
        setTakesKeyboard(window, !isFocusedWhenItTakesKeys());
        break;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
        setTakesKeyboard(window, true);
        break;
    case QEvent::MouseButtonRelease:
        m_distance += QMargins(m_dragged.x(), m_dragged.y(), -m_dragged.x(), -m_dragged.y());
        m_dragged = {};
        m_shell.place(window, m_edges, m_distance);
        break;
    case QEvent::Leave:
        setTakesKeyboard(window, false);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void LayerPanelBackend::setTakesKeyboard(QWindow &window, bool takes)
{
    if (takes == m_takesKeyboard)
        return;
    m_takesKeyboard = takes;
    m_shell.setTakesKeyboard(window, takes);
}

} // namespace kelo
