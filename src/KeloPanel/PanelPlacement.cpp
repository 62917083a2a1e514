#include "KeloPanel/PanelPlacement.h"

#include <algorithm>

namespace kelo {

namespace {

constexpr double anchorGap = 12;

template<typename Matches>
const ScreenArea *firstMatch(std::span<const ScreenArea> screens, const ScreenArea *mainScreen,
                             Matches matches)
{
    const auto screen = std::find_if(screens.begin(), screens.end(), matches);
    return screen == screens.end() ? mainScreen : &*screen;
}

} // namespace

const ScreenArea *screenContaining(std::span<const ScreenArea> screens, const ScreenArea *mainScreen,
                                   const QPointF &point)
{
    // Neighbouring screens share an edge: it belongs to the one on its right or below.
    return firstMatch(screens, mainScreen, [&](const ScreenArea &screen) {
        return screen.frame.left() <= point.x() && point.x() < screen.frame.right() &&
               screen.frame.top() <= point.y() && point.y() < screen.frame.bottom();
    });
}

const ScreenArea *screenIntersecting(std::span<const ScreenArea> screens, const ScreenArea *mainScreen,
                                     const QRectF &rect)
{
    return firstMatch(screens, mainScreen,
                      [&](const ScreenArea &screen) { return screen.frame.intersects(rect); });
}

QPointF centredOrigin(const QRectF &visibleFrame, const QSizeF &panel)
{
    return {visibleFrame.center().x() - panel.width() * 0.5,
            visibleFrame.bottom() - visibleFrame.height() * 0.6 - panel.height() * 0.5};
}

QPointF originNear(const QRectF &anchor, const QRectF &visibleFrame, const QSizeF &panel)
{
    const double x = anchor.center().x() - panel.width() * 0.5;
    double y = anchor.bottom() + anchorGap;
    if (y + panel.height() > visibleFrame.bottom())
        y = anchor.top() - anchorGap - panel.height();
    return originInside({x, y}, visibleFrame, panel);
}

QPointF originInside(const QPointF &origin, const QRectF &visibleFrame, const QSizeF &panel)
{
    return {std::min(std::max(origin.x(), visibleFrame.left()), visibleFrame.right() - panel.width()),
            std::max(std::min(origin.y(), visibleFrame.bottom() - panel.height()), visibleFrame.top())};
}

} // namespace kelo
