#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <optional>

namespace kelo {

/// A floating panel's window around its content. Lengths are in logical pixels.
struct FloatingFrame
{
    QSize windowSize;
    /// Where the surface with the content lies in the window.
    QRect contentRect;
    double cornerRadius = 0;
    /// Whether the window system is left to draw a shadow; else the surface draws its own around contentRect.
    bool shadowByWindow = false;

    friend bool operator==(const FloatingFrame &, const FloatingFrame &) = default;
};

/// An image that fills any rectangle: its corners keep their size, the rest is stretched.
struct StretchableImage
{
    QImage image;
    /// The size of the corners, in pixels of the image; the same on all sides.
    int capInset = 0;
};

/// Measures of the translucent surface under panels. Where the desktop can't blend windows, the surface is
/// opaque, its corners are smaller and it has no shadow of its own.
class GlassSurface
{
public:
    GlassSurface() = delete;

    /// Room around a panel for its drawn shadow, in logical pixels.
    static constexpr int floatingShadowMargin = 28;

    /// Whether surfaces are translucent, with a drawn shadow: where the desktop blends windows. That is where
    /// a compositing manager owns the selection _NET_WM_CM_Sn (EWMH) on X11, and always elsewhere.
    /// MIVORA_COMPOSITING=0|1 overrules.
    static bool isLiquid();

    /// Whether the window manager blurs what is behind windows that ask for it
    /// (_KDE_NET_WM_BLUR_BEHIND_REGION).
    static bool isBlurred();

    /// 22 where surfaces are translucent, else 14.
    static double panelCornerRadius();

    /// An opaque rounded rectangle as small as it can be stretched from: (2r + 1) x (2r + 1) pixels.
    static StretchableImage roundedMask(int radius);

    /// The card with its rounded corners, in the window: the part that takes clicks.
    static QRegion cardRegion(const FloatingFrame &frame);

    /// The frame of a panel with content of `size`; without `cornerRadius` it is panelCornerRadius().
    static FloatingFrame floating(const QSize &size, std::optional<double> cornerRadius = {});
};

} // namespace kelo
