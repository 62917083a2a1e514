#include "JoinPanel/CornerPlacement.h"

namespace mivora {

namespace {

constexpr double cornerMargin = 12;

} // namespace

QPointF cornerOrigin(PanelCorner corner, const QRectF &visibleFrame, const QSizeF &panel)
{
    const bool isLeft = corner == PanelCorner::topLeft || corner == PanelCorner::bottomLeft;
    const bool isTop = corner == PanelCorner::topLeft || corner == PanelCorner::topRight;
    return {isLeft ? visibleFrame.left() + cornerMargin : visibleFrame.right() - panel.width() - cornerMargin,
            isTop ? visibleFrame.top() + cornerMargin
                  : visibleFrame.bottom() - panel.height() - cornerMargin};
}

} // namespace mivora
