#pragma once

#include <QRect>
#include <QSize>
#include <cstdint>
#include <span>
#include <vector>

class QScreen;

namespace kelo {

/// What a bar of the desktop keeps for itself: the twelve numbers of EWMH's _NET_WM_STRUT_PARTIAL.
using Strut = std::vector<std::uint32_t>;

/// `screen` without the parts that `struts` keep. They count from the edges of the whole `desktop`. Values of
/// another length than twelve are ignored.
QRect withoutStruts(const QRect &screen, const QSize &desktop, std::span<const Strut> struts);

/// The part of the screen that the desktop's bars leave free, in logical pixels. On X11 Qt knows it for a
/// single screen only; with several it is read from the bars themselves.
QRect workArea(const QScreen &screen);

/// The screen with the middle of the active window; null where the desktop tells of none, and for the
/// desktop's own window, which lies on all screens.
QScreen *screenOfActiveWindow();

} // namespace kelo
