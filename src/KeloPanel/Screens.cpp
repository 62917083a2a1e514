#include "KeloPanel/Screens.h"

#include "KeloPanel/backends/X11WorkArea.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

namespace kelo {

namespace {

ScreenArea areaOf(const QScreen &screen)
{
    return {screen.geometry(), workArea(screen)};
}

// The one of all screens, in the platform's order, that `pick` chooses when it is given them and the main
// one.
template<typename Pick> std::optional<ScreenArea> pickScreen(Pick pick)
{
    std::vector<ScreenArea> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.push_back(areaOf(*screen));
    const auto main = mainScreen();
    const ScreenArea *picked = pick(areas, main ? &*main : nullptr);
    return picked ? std::optional(*picked) : std::nullopt;
}

} // namespace

std::optional<ScreenArea> screenAt(const QPointF &point)
{
    return pickScreen(
        [&](const auto &screens, const auto *main) { return screenContaining(screens, main, point); });
}

std::optional<ScreenArea> screenTouching(const QRectF &rect)
{
    return pickScreen(
        [&](const auto &screens, const auto *main) { return screenIntersecting(screens, main, rect); });
}

std::optional<ScreenArea> mainScreen()
{
    for (const QScreen *screen : {screenOfActiveWindow(), QGuiApplication::screenAt(QCursor::pos()),
                                  QGuiApplication::primaryScreen()}) {
        if (screen)
            return areaOf(*screen);
    }
    return {};
}

ScreenWatcher::ScreenWatcher(QObject *parent) : QObject(parent)
{
    m_settle.setSingleShot(true);
    connect(&m_settle, &QTimer::timeout, this, &ScreenWatcher::changed);
    for (const QScreen *screen : QGuiApplication::screens())
        watch(screen);
    const auto later = qOverload<>(&QTimer::start);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenWatcher::watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, &m_settle, later);
    connect(qGuiApp, &QGuiApplication::screenRemoved, &m_settle, later);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &m_settle, later);
}

void ScreenWatcher::watch(const QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, &m_settle, qOverload<>(&QTimer::start));
    connect(screen, &QScreen::availableGeometryChanged, &m_settle, qOverload<>(&QTimer::start));
}

} // namespace kelo
