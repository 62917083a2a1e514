#pragma once

#include <QQuickImageProvider>

namespace kelo {

/// "image://symbol/NAME/COLOR": one of the theme's symbols, drawn in one colour at the size asked for.
class SymbolImages final : public QQuickImageProvider
{
public:
    SymbolImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace kelo
