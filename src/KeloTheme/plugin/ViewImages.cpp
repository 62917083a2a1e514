#include "KeloTheme/plugin/ViewImages.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace kelo {

QImage SymbolImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const auto slash = id.lastIndexOf(QLatin1Char('/'));
    QSvgRenderer symbol(QStringLiteral(":/KeloThemeViews/symbols/") + id.left(slash) +
                        QStringLiteral(".svg"));
    if (!symbol.isValid())
        return {};
    *size = requestedSize.isValid() ? requestedSize : symbol.defaultSize();
    QImage image(*size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    symbol.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), QColor(id.mid(slash + 1)));
    return image;
}

QIcon applicationIcon()
{
    QSvgRenderer drawing(QStringLiteral(":/KeloTheme/app.kelo.Mivora.svg"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawing.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace kelo
