#include "Views/ApplicationIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace kelo {

QIcon applicationIcon()
{
    QSvgRenderer drawing(QStringLiteral(":/Views/app.kelo.Mivora.svg"));
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
