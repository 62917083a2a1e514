#include "KeloPanel/backends/X11WorkArea.h"

#include "Platform/linux/X11Connection.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <array>

namespace kelo {

using mivora::X11Connection;

namespace {

constexpr std::size_t strutLength = 12;

std::vector<Strut> currentStruts(const X11Connection &x11)
{
    std::vector<Strut> struts;
    for (const xcb_window_t window : x11.values(x11.root(), "_NET_CLIENT_LIST"))
        struts.push_back(x11.values(window, "_NET_WM_STRUT_PARTIAL"));
    return struts;
}

// Qt keeps the screens' origins in pixels of the device and scales their sizes.
QRect inDevicePixels(const QScreen &screen)
{
    return {screen.geometry().topLeft(), screen.size() * screen.devicePixelRatio()};
}

} // namespace

QRect withoutStruts(const QRect &screen, const QSize &desktop, std::span<const Strut> struts)
{
    QRect area = screen;
    for (const Strut &strut : struts) {
        if (strut.size() != strutLength)
            continue;
        const auto value = [&](int index) { return int(strut[std::size_t(index)]); };
        // The widths at the left, right, top and bottom edge, then where each begins and ends along its edge.
        const std::array bars{
            QRect(QPoint(0, value(4)), QPoint(value(0) - 1, value(5))),
            QRect(QPoint(desktop.width() - value(1), value(6)), QPoint(desktop.width() - 1, value(7))),
            QRect(QPoint(value(8), 0), QPoint(value(9), value(2) - 1)),
            QRect(QPoint(value(10), desktop.height() - value(3)), QPoint(value(11), desktop.height() - 1)),
        };
        if (bars[0].intersects(screen))
            area.setLeft(std::max(area.left(), bars[0].right() + 1));
        if (bars[1].intersects(screen))
            area.setRight(std::min(area.right(), bars[1].left() - 1));
        if (bars[2].intersects(screen))
            area.setTop(std::max(area.top(), bars[2].bottom() + 1));
        if (bars[3].intersects(screen))
            area.setBottom(std::min(area.bottom(), bars[3].top() - 1));
    }
    // Bars that leave nothing are a mistake of theirs.
    return area.isValid() ? area : screen;
}

QRect workArea(const QScreen &screen)
{
    if (!X11Connection::isAvailable() || QGuiApplication::screens().size() < 2)
        return screen.availableGeometry();
    const X11Connection x11;
    const auto desktop = x11.values(x11.root(), "_NET_DESKTOP_GEOMETRY");
    if (desktop.size() != 2)
        return screen.availableGeometry();
    const QRect device = inDevicePixels(screen);
    const QRect free = withoutStruts(device, QSize(int(desktop[0]), int(desktop[1])), currentStruts(x11));
    const double ratio = screen.devicePixelRatio();
    const QPoint offset = ((free.topLeft() - device.topLeft()) / ratio);
    return {device.topLeft() + offset, free.size() / ratio};
}

QScreen *screenOfActiveWindow()
{
    if (!X11Connection::isAvailable())
        return nullptr;
    const X11Connection x11;
    const auto active = x11.values(x11.root(), "_NET_ACTIVE_WINDOW");
    if (active.empty() || x11.values(active.front(), "_NET_WM_WINDOW_TYPE") ==
                              std::vector{x11.atom("_NET_WM_WINDOW_TYPE_DESKTOP")})
        return nullptr;
    // Some managers leave the number of a window there that has gone.
    const QRect frame = x11.frame(active.front());
    if (frame.isNull())
        return nullptr;
    const auto screens = QGuiApplication::screens();
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const QScreen *screen) {
        return inDevicePixels(*screen).contains(frame.center());
    });
    return found == screens.end() ? nullptr : *found;
}

} // namespace kelo
