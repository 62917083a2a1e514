#pragma once

#include <QRectF>
#include <optional>

class QTimer;

namespace kelo {

/// The free area, without the desktop's bars and docks, of the screen where the user works: that of the
/// active window; where there is none, or the desktop doesn't tell, that of the pointer; else the desktop's
/// primary one. Nothing without screens. y grows downwards, as everywhere in Qt.
std::optional<QRectF> mainArea();

/// The free area of the screen at a point of the desktop, or of the first that a rectangle touches; else
/// `mainArea`.
std::optional<QRectF> areaAt(const QPoint &point);
std::optional<QRectF> areaTouching(const QRect &rect);

/// Where a panel stands on a screen: `distance` away from `edges`, in the middle between those not named.
struct PanelPlace
{
    Qt::Edges edges;
    double distance = 0;
};

/// The top left corner of a panel in its place.
QPointF originAt(const PanelPlace &place, const QRectF &area, const QSizeF &panel);

/// The top left corner of a panel in the middle, its centre at 60 % of the height counted from below.
QPointF centredOrigin(const QRectF &area, const QSizeF &panel);

/// The top left corner of a panel 12 below `anchor`; above it where there is no room, and never outside.
QPointF originNear(const QRectF &anchor, const QRectF &area, const QSizeF &panel);

/// The top left corner nearest to `origin` at which the panel is all inside. One larger than the area keeps
/// its top and right edges on it.
QPointF originInside(const QPointF &origin, const QRectF &area, const QSizeF &panel);

/// Starts the timer when screens come, go or change, or when the desktop's bars do.
void startWhenScreensChange(QTimer &timer);

} // namespace kelo
