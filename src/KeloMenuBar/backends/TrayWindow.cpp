#include "KeloMenuBar/backends/TrayWindow.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <utility>

namespace kelo {

TrayWindow::TrayWindow(Background background, std::function<void(QPoint)> openMenu)
    : m_background(background), m_openMenu(std::move(openMenu))
{
    setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    if (background == Background::Transparent) {
        QSurfaceFormat format = requestedFormat();
        format.setAlphaBufferSize(8);
        setFormat(format);
    }
    setMinimumSize({22, 22});
    resize(22, 22);
}

void TrayWindow::setPicture(const StatusPicture &picture)
{
    m_picture = picture;
    update();
}

QRect TrayWindow::square() const
{
    const int side = std::min(width(), height());
    return {(width() - side) / 2, (height() - side) / 2, side, side};
}

void TrayWindow::paintEvent(QPaintEvent *)
{
    const QRect rect = square();
    const QImage image = m_picture.draw(qRound(rect.height() * devicePixelRatio()));
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(QRect(QPoint(), size()), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.drawImage(rect, image);
}

void TrayWindow::resizeEvent(QResizeEvent *event)
{
    QRasterWindow::resizeEvent(event);
    if (m_background == Background::Transparent)
        return;
    const QRect rect = square();
    QPainterPath path;
    path.addRoundedRect(rect, rect.height() / 5.0, rect.height() / 5.0);
    setMask(QRegion(path.toFillPolygon().toPolygon()));
}

void TrayWindow::mousePressEvent(QMouseEvent *event)
{
    m_openMenu(event->globalPosition().toPoint());
}

} // namespace kelo
