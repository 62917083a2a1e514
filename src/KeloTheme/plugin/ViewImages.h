#pragma once

#include <QIcon>
#include <QQuickImageProvider>

namespace kelo {

/// "image://symbol/NAME/COLOR": one of the theme's symbols, drawn in one colour at the size asked for.
class SymbolImages final : public QQuickImageProvider
{
public:
    SymbolImages() : QQuickImageProvider(Image) {}

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

/// The program's icon for window frames and task bars of X11, in the sizes that these ask for. Wayland's take
/// it from the desktop entry.
QIcon applicationIcon();

} // namespace kelo
