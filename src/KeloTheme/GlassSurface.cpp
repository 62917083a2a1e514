#include "KeloTheme/GlassSurface.h"

#include "KeloTheme/Compositing.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <vector>

namespace kelo {

namespace {

constexpr double shadowOpacity = 0.28;
constexpr double shadowRadius = 18;
constexpr double shadowDrop = 8;

// A square of opacities with 8 more bits than an image has, so that faint parts don't show steps.
struct Opacities
{
    std::size_t size;
    std::vector<int> values;

    int *row(std::size_t y) { return values.data() + y * size; }
};

Opacities opacitiesOf(const QImage &alpha)
{
    Opacities opacities{std::size_t(alpha.width()), {}};
    opacities.values.reserve(opacities.size * opacities.size);
    for (int y = 0; y < alpha.height(); ++y) {
        const uchar *line = alpha.constScanLine(y);
        std::transform(line, line + alpha.width(), std::back_inserter(opacities.values),
                       [](uchar value) { return value << 8; });
    }
    return opacities;
}

void write(const Opacities &opacities, QImage &alpha)
{
    for (std::size_t y = 0; y < opacities.size; ++y) {
        const int *row = opacities.values.data() + y * opacities.size;
        std::transform(row, row + opacities.size, alpha.scanLine(int(y)),
                       [](int value) { return value >> 8; });
    }
}

void transpose(Opacities &opacities)
{
    for (std::size_t y = 0; y < opacities.size; ++y) {
        for (std::size_t x = 0; x < y; ++x)
            std::swap(opacities.row(y)[x], opacities.row(x)[y]);
    }
}

// Running mean over 2 * reach + 1 values; outside there is nothing.
void blurRow(int *row, std::vector<int> &scratch, int reach)
{
    const int count = int(scratch.size());
    int sum = std::accumulate(row, row + std::min(reach, count), 0);
    for (int i = 0; i < count; ++i) {
        sum += i + reach < count ? row[i + reach] : 0;
        sum -= i > reach ? row[i - reach - 1] : 0;
        scratch[std::size_t(i)] = sum / (2 * reach + 1);
    }
    std::copy(scratch.begin(), scratch.end(), row);
}

void blurRows(Opacities &opacities, int reach)
{
    // Three box blurs come close to a Gaussian one.
    constexpr int passes = 3;
    std::vector<int> scratch(opacities.size);
    for (std::size_t y = 0; y < opacities.size; ++y) {
        for (int pass = 0; pass < passes; ++pass)
            blurRow(opacities.row(y), scratch, reach);
    }
}

void blur(QImage &alpha, int reach)
{
    Opacities opacities = opacitiesOf(alpha);
    blurRows(opacities, reach);
    transpose(opacities);
    blurRows(opacities, reach);
    transpose(opacities);
    write(opacities, alpha);
}

QPainterPath roundedSquare(double inset, double size, double radius)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(inset, inset, size, size), radius, radius);
    return path;
}

QImage blurredSquare(int imageSize, const QPainterPath &square, double pixelRatio)
{
    QImage alpha(imageSize, imageSize, QImage::Format_Alpha8);
    alpha.fill(Qt::transparent);
    QPainter painter(&alpha);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(square.translated(0, shadowDrop * pixelRatio), Qt::black);
    painter.end();
    // Three boxes of this reach have the standard deviation of half the blur radius.
    blur(alpha, int(std::lround(shadowRadius / 2 * pixelRatio * 0.94)));
    return alpha;
}

} // namespace

bool GlassSurface::isLiquid()
{
    return desktopComposites();
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
    painter.fillPath(roundedSquare(0, size, radius), Qt::black);
    return {image, radius};
}

FloatingFrame GlassSurface::floating(const QSize &size, std::optional<double> cornerRadius)
{
    const bool liquid = isLiquid();
    const double radius = cornerRadius.value_or(liquid ? 22 : 14);
    if (!liquid)
        return {size, QRect(QPoint(0, 0), size), radius, true};
    constexpr int margin = floatingShadowMargin;
    return {size.grownBy({margin, margin, margin, margin}), QRect(QPoint(margin, margin), size), radius,
            false};
}

StretchableImage GlassSurface::shadow(double radius, double pixelRatio)
{
    const double margin = floatingShadowMargin * pixelRatio;
    // The part between the caps must be free of the corners' curves, in the shadow as well.
    const double square = 2 * (radius + shadowRadius + shadowDrop) * pixelRatio + 1;
    const int size = int(std::ceil(square + 2 * margin)) | 1;
    const QPainterPath shape = roundedSquare(margin, size - 2 * margin, radius * pixelRatio);

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(QColor::fromRgbF(0, 0, 0, float(shadowOpacity)));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, blurredSquare(size, shape, pixelRatio));
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(shape, Qt::black);
    return {image, size / 2};
}

void GlassSurface::configure(QWindow &window, const QSize &size, const QString &title)
{
    window.setTitle(title);
    window.resize(size);
    window.setMinimumSize(size);
    window.setMaximumSize(size);
}

QImage GlassSurface::image(const QString &id)
{
    const QStringList parts = id.split(QLatin1Char('/'));
    if (parts.size() != 3 || parts.first() != QLatin1String("shadow"))
        return {};
    return shadow(parts[1].toDouble(), parts[2].toDouble()).image;
}

} // namespace kelo
