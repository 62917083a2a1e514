#include "KeloPanel/Screens.h"

#include "KeloPanel/backends/X11WorkArea.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace kelo {

namespace {

constexpr double anchorGap = 12;

} // namespace

std::optional<QRectF> mainArea()
{
    for (const QScreen *screen : {screenOfActiveWindow(), QGuiApplication::screenAt(QCursor::pos()),
                                  QGuiApplication::primaryScreen()}) {
        if (screen)
            return workArea(*screen);
    }
    return {};
}

std::optional<QRectF> areaAt(const QPoint &point)
{
    const QScreen *screen = QGuiApplication::screenAt(point);
    return screen ? workArea(*screen) : mainArea();
}

std::optional<QRectF> areaTouching(const QRect &rect)
{
    for (const QScreen *screen : QGuiApplication::screens()) {
        if (screen->geometry().intersects(rect))
            return workArea(*screen);
    }
    return mainArea();
}

QPointF centredOrigin(const QRectF &area, const QSizeF &panel)
{
    return {area.center().x() - panel.width() * 0.5,
            area.bottom() - area.height() * 0.6 - panel.height() * 0.5};
}

QPointF originNear(const QRectF &anchor, const QRectF &area, const QSizeF &panel)
{
    const double x = anchor.center().x() - panel.width() * 0.5;
    double y = anchor.bottom() + anchorGap;
    if (y + panel.height() > area.bottom())
        y = anchor.top() - anchorGap - panel.height();
    return originInside({x, y}, area, panel);
}

QPointF originInside(const QPointF &origin, const QRectF &area, const QSizeF &panel)
{
    return {std::min(std::max(origin.x(), area.left()), area.right() - panel.width()),
            std::max(std::min(origin.y(), area.bottom() - panel.height()), area.top())};
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
