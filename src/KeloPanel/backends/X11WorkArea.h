#pragma once

#include <QRect>

class QScreen;

namespace kelo {

/// The part of the screen that the desktop's bars leave free. On X11 Qt knows it for a single screen only;
/// with several it is read from the bars themselves (EWMH's _NET_WM_STRUT_PARTIAL).
QRect workArea(const QScreen &screen);

} // namespace kelo
