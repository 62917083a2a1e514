#include "KeloTheme/GlassSurface.h"

#include "Platform/linux/X11Connection.h"

#include <QBitmap>
#include <QPainter>

namespace kelo {

using mivora::X11Connection;

bool GlassSurface::isLiquid()
{
    const QByteArray wanted = qgetenv("MIVORA_COMPOSITING");
    if (wanted == "0" || wanted == "1")
        return wanted == "1";
    if (!X11Connection::isAvailable())
        return true;
    const X11Connection x11;
    return x11.selectionOwner(x11.ofScreen("_NET_WM_CM_S")) != XCB_WINDOW_NONE;
}

bool GlassSurface::isBlurred()
{
    if (!X11Connection::isAvailable())
        return false;
    const X11Connection x11;
    return x11.hasProperty(x11.root(), "_KDE_NET_WM_BLUR_BEHIND_REGION");
}

double GlassSurface::panelCornerRadius()
{
    return isLiquid() ? 22 : 14;
}

StretchableImage GlassSurface::roundedMask(int radius)
{
    const int size = 2 * radius + 1;
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawRoundedRect(image.rect(), radius, radius);
    return {image, radius};
}

QRegion GlassSurface::cardRegion(const FloatingFrame &frame)
{
    const StretchableImage mask = roundedMask(int(frame.cornerRadius));
    const QSize size = frame.contentRect.size();
    const int inset = mask.capInset;
    // The mask's corners, and everything between them.
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const bool right : {false, true}) {
        for (const bool bottom : {false, true}) {
            const QPoint target(right ? size.width() - inset : 0, bottom ? size.height() - inset : 0);
            const QPoint source(right ? inset + 1 : 0, bottom ? inset + 1 : 0);
            painter.drawImage(target, mask.image, QRect(source, QSize(inset, inset)));
        }
    }
    painter.end();
    const QBitmap card = QBitmap::fromImage(image.createAlphaMask(Qt::ThresholdDither));
    return QRegion(card).translated(frame.contentRect.topLeft());
}

FloatingFrame GlassSurface::floating(const QSize &size, std::optional<double> cornerRadius)
{
    const double radius = cornerRadius.value_or(panelCornerRadius());
    if (!isLiquid())
        return {size, QRect(QPoint(0, 0), size), radius, true};
    constexpr int margin = floatingShadowMargin;
    return {size.grownBy({margin, margin, margin, margin}), QRect(QPoint(margin, margin), size), radius,
            false};
}

} // namespace kelo
