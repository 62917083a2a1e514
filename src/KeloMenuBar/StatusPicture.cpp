#include "KeloMenuBar/StatusPicture.h"

#include "KeloMenuBar/Symbols.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

// Everything is drawn on a dark plate: on a dark panel it can hardly be seen, on a light one it is what the
// light drawing stands out against. Lengths are in units of a picture 22 high.
namespace kelo {

namespace {

constexpr qreal gridHeight = 22;
constexpr qreal longestText = 260;
constexpr qreal textIndent = 26;
constexpr qreal textMargin = 7;
// Widths come in steps, so that the neighbours of the picture don't move at each minute.
constexpr qreal widthStep = 4;

constexpr QColor plateColor(28, 28, 30);
constexpr QColor ink(255, 255, 255);
constexpr QColor orange(255, 159, 10);

QFont textFont(qreal pixels, QFont::Weight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(qRound(pixels));
    font.setWeight(weight);
    return font;
}

QImage canvas(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void drawPlate(QPainter &painter, const QRectF &rect, qreal radius)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(plateColor);
    painter.drawRoundedRect(rect, radius, radius);
}

// The symbol, a drawing in white, in the colour. It is drawn for whole pixels at the multiples of 22.
void drawSymbol(QPainter &painter, const QString &symbol, const QColor &color, const QRect &pixels)
{
    QImage image = canvas(pixels.width(), pixels.height());
    QPainter tinted(&image);
    QSvgRenderer(symbolFiles(symbol).drawing).render(&tinted);
    tinted.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tinted.fillRect(image.rect(), color);
    tinted.end();
    painter.drawImage(pixels, image);
}

QImage drawIcon(const StatusPicture &picture, int height, const QColor &color)
{
    QImage image = canvas(height, height);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawPlate(painter, image.rect(), height * 5 / gridHeight);
    // One up, so that the badge stays clear of the round corner.
    drawSymbol(painter, picture.symbol, color, image.rect().translated(0, -qRound(height / gridHeight)));
    return image;
}

QImage drawWide(const StatusPicture &picture, int height, const QColor &color)
{
    const qreal unit = height / gridHeight;
    const QFont font = textFont(13 * unit, QFont::Medium);
    const QFontMetricsF metrics(font);
    // In the middle: the countdown stands at the end.
    const QString text = metrics.elidedText(picture.text, Qt::ElideMiddle, longestText * unit);
    const qreal step = widthStep * unit;
    const qreal textWidth = std::ceil(metrics.horizontalAdvance(text) / step) * step;
    const QRectF textRect(textIndent * unit, 0, textWidth, height);

    QImage image = canvas(qRound(textRect.right() + textMargin * unit), height);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawPlate(painter, image.rect(), 6 * unit);
    drawSymbol(painter, picture.symbol, color, QRect(qRound(2 * unit), 0, height, height));
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(textRect, int(Qt::AlignVCenter | Qt::AlignLeft) | Qt::TextSingleLine, text);
    return image;
}

// The largest font in which the text fits the width, down to where it would not be legible any more. Loading
// a font is what takes the time here, so the size is computed from one measurement, not tried.
QFont fittingFont(const QString &text, qreal width, qreal unit)
{
    constexpr qreal largest = 13;
    constexpr qreal smallest = 7;
    const QFont font = textFont(largest * unit, QFont::Bold);
    const qreal advance = QFontMetricsF(font).horizontalAdvance(text);
    if (advance <= width)
        return font;
    return textFont(std::max(smallest, std::floor(largest * width / advance)) * unit, QFont::Bold);
}

// A leaf of a calendar whose day is the countdown.
QImage drawCountdown(const StatusPicture &picture, int height, const QColor &color)
{
    const qreal unit = height / gridHeight;
    QImage image = canvas(height, height);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawPlate(painter, image.rect(), 5 * unit);
    painter.setBrush(color);
    painter.drawRoundedRect(QRectF(3 * unit, 3 * unit, 16 * unit, 3 * unit), 1 * unit, 1 * unit);
    painter.drawRect(QRectF(6 * unit, 2 * unit, 2 * unit, 2 * unit));
    painter.drawRect(QRectF(14 * unit, 2 * unit, 2 * unit, 2 * unit));

    const QRectF room(0, 6 * unit, height, 15 * unit);
    painter.setFont(fittingFont(picture.text, room.width() - 2 * unit, unit));
    painter.setPen(color);
    painter.drawText(room, int(Qt::AlignCenter) | Qt::TextSingleLine, picture.text);
    return image;
}

} // namespace

QImage StatusPicture::draw(int height) const
{
    const QColor &color = isUrgent ? orange : ink;
    if (text.isEmpty())
        return drawIcon(*this, height, color);
    return shape == Shape::Wide ? drawWide(*this, height, color) : drawCountdown(*this, height, color);
}

} // namespace kelo
