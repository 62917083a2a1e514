#pragma once

#include "KeloTheme/ViewHost.h"

#include <QQuickImageProvider>

namespace kelo {

/// "image://kelo/ID": pictures that the program computes.
class ContextImages final : public QQuickImageProvider
{
public:
    explicit ContextImages(std::function<QImage(const QString &)> image)
        : QQuickImageProvider(Image), m_image(std::move(image))
    {
    }

    QImage requestImage(const QString &id, QSize *size, const QSize &) override
    {
        QImage image = m_image(id);
        *size = image.size();
        return image;
    }

private:
    std::function<QImage(const QString &)> m_image;
};

} // namespace kelo
