#include "KeloPanel/Screens.h"

#include "KeloPanel/backends/X11WorkArea.h"

#include <QGuiApplication>
#include <QScreen>

namespace kelo {

namespace {

ScreenArea areaOf(const QScreen &screen)
{
    return {screen.geometry(), workArea(screen)};
}

} // namespace

std::vector<ScreenArea> currentScreens()
{
    std::vector<ScreenArea> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.push_back(areaOf(*screen));
    return areas;
}

std::optional<ScreenArea> mainScreen()
{
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        return areaOf(*screen);
    return {};
}

} // namespace kelo
