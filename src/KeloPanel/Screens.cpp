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
