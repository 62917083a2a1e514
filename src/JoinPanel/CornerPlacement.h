#pragma once

#include "Preferences/PanelCorner.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace mivora {

/// Where the top left corner of a panel's window lies that stands in a corner of the screen's free area, 12
/// logical pixels from its edges. The window includes the room for the shadow. y grows downwards.
QPointF cornerOrigin(PanelCorner corner, const QRectF &visibleFrame, const QSizeF &panel);

} // namespace mivora
