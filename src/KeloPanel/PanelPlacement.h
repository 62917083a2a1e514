#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>
#include <span>

namespace kelo {

/// A screen as far as placing panels goes. y grows downwards, as everywhere in Qt.
struct ScreenArea
{
    QRectF frame;
    /// The frame without the desktop's bars and docks.
    QRectF visibleFrame;

    friend bool operator==(const ScreenArea &, const ScreenArea &) = default;
};

/// The first screen whose frame contains \a point, else \a mainScreen; null without any.
const ScreenArea *screenContaining(std::span<const ScreenArea> screens, const ScreenArea *mainScreen,
                                   const QPointF &point);

/// The first screen whose frame intersects \a rect, else \a mainScreen; null without any.
const ScreenArea *screenIntersecting(std::span<const ScreenArea> screens, const ScreenArea *mainScreen,
                                     const QRectF &rect);

/// The top left corner of a panel in the middle, its centre at 60 % of the height counted from below.
QPointF centredOrigin(const QRectF &visibleFrame, const QSizeF &panel);

/// The top left corner of a panel 12 below \a anchor; above it where there is no room, and never outside.
QPointF originNear(const QRectF &anchor, const QRectF &visibleFrame, const QSizeF &panel);

/// The top left corner nearest to \a origin at which the panel is all inside. One larger than the screen
/// keeps its top and right edges on it.
QPointF originInside(const QPointF &origin, const QRectF &visibleFrame, const QSizeF &panel);

} // namespace kelo
