#include "KeloPanel/PanelSurface.h"

#include <QCursor>

namespace kelo {

double PanelSurface::opacity() const
{
    if (!isLiquid())
        return 1;
    return m_isBlurred ? 0.75 : 0.98;
}

void PanelSurface::setFrame(const FloatingFrame &frame, bool isBlurred)
{
    if (frame == m_frame && isBlurred == m_isBlurred)
        return;
    m_frame = frame;
    m_isBlurred = isBlurred;
    Q_EMIT changed();
}

void PanelSurface::beginDrag()
{
    if (m_window)
        m_grip = QCursor::pos() - m_window->position();
}

void PanelSurface::drag()
{
    if (m_window && onDrag)
        onDrag(QCursor::pos() - m_grip - m_window->position());
}

} // namespace kelo
