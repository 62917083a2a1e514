#pragma once

#include <QImage>
#include <QString>

namespace kelo {

/// A picture of a status item, for hosts that draw no text. Legible on light and on dark panels: hosts don't
/// recolour pictures, and don't tell what they put them on.
struct StatusPicture
{
    enum class Shape {
        /// Icon and text side by side.
        Wide,
        /// The text in place of the icon's inside; the icon alone when there is no text.
        Square,
    };

    Shape shape = Shape::Square;
    QString symbol{};
    QString text{};
    bool isUrgent = false;

    friend bool operator==(const StatusPicture &, const StatusPicture &) = default;

    /// Draws the picture with this height in pixels; any script, the text shortened in its middle if it is
    /// long.
    QImage draw(int height) const;
};

} // namespace kelo
