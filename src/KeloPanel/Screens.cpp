#include "KeloPanel/Screens.h"

#include "KeloPanel/backends/X11WorkArea.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
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

QPointF originAt(const PanelPlace &place, const QRectF &area, const QSizeF &panel)
{
    const auto along = [&](Qt::Edge first, Qt::Edge last, double start, double end, double length) {
        if (place.edges.testFlag(first))
            return start + place.distance;
        return place.edges.testFlag(last) ? end - place.distance - length : (start + end - length) / 2;
    };
    return {along(Qt::LeftEdge, Qt::RightEdge, area.left(), area.right(), panel.width()),
            along(Qt::TopEdge, Qt::BottomEdge, area.top(), area.bottom(), panel.height())};
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

void startWhenScreensChange(QTimer &timer)
{
    const auto start = qOverload<>(&QTimer::start);
    const auto watch = [&timer, start](const QScreen *screen) {
        QObject::connect(screen, &QScreen::geometryChanged, &timer, start);
        QObject::connect(screen, &QScreen::availableGeometryChanged, &timer, start);
    };
    for (const QScreen *screen : QGuiApplication::screens())
        watch(screen);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &timer, watch);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &timer, start);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &timer, start);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &timer, start);
}

} // namespace kelo
