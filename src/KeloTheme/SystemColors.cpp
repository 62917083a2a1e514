#include "KeloTheme/SystemColors.h"

#include <algorithm>
#include <cmath>

namespace kelo {

namespace {

constexpr QRgb defaultAccent = 0x0a6ce8;

QColor black(double opacity)
{
    return QColor::fromRgbF(0, 0, 0, float(opacity));
}

QColor white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, float(opacity));
}

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

SystemColors colorsOf(ColorScheme scheme)
{
    const auto pick = [&](const QColor &light, const QColor &dark) {
        return scheme == ColorScheme::dark ? dark : light;
    };
    SystemColors colors;
    colors.label = pick(black(0.86), white(0.92));
    colors.secondaryLabel = pick(black(0.6), white(0.62));
    colors.tertiaryLabel = pick(black(0.38), white(0.38));
    colors.separator = pick(black(0.1), white(0.12));
    colors.windowBackground = pick(QColor(0xf4f4f6), QColor(0x1f1f22));
    colors.sidebarBackground = pick(QColor(0xeaeaee), QColor(0x27272b));
    colors.groupBackground = pick(QColor(0xffffff), QColor(0x2b2b2f));
    colors.control = pick(black(0.07), white(0.12));
    colors.controlHovered = pick(black(0.1), white(0.17));
    colors.controlPressed = pick(black(0.16), white(0.24));
    colors.controlBorder = pick(black(0.04), white(0.05));
    colors.orange = pick(QColor(0xb84d00), QColor(0xffa033));
    colors.red = pick(QColor(0xd7263d), QColor(0xff6b70));
    colors.green = pick(QColor(0x1f8f45), QColor(0x3ecf6b));
    colors.panel = pick(QColor(0xf8f8fa), QColor(0x29292d));
    colors.panelBorder = pick(black(0.12), black(0.55));
    colors.panelHighlight = pick(white(0.9), white(0.14));
    colors.cardFill = pick(black(0.055), white(0.055));
    colors.cardBorder = pick(black(0.09), white(0.09));
    return colors;
}

// 4.5 is what WCAG 2.1 asks of text (1.4.3); the steps lead to black or white at the latest.
QColor legible(const QColor &color, const QColor &background)
{
    constexpr int steps = 40;
    const float change = (luminance(background) < 0.18 ? 1.0F : -1.0F) / steps;
    QColor result = color.toHsl();
    for (int i = 0; i < steps && contrast(result.toRgb(), background) < 4.5; ++i) {
        const float lightness = std::clamp(result.lightnessF() + change, 0.0F, 1.0F);
        result.setHslF(result.hslHueF(), result.hslSaturationF(), lightness);
    }
    return result.toRgb();
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

SystemColors SystemColors::of(ColorScheme scheme, const QColor &accent)
{
    SystemColors colors = colorsOf(scheme);
    colors.accent = accent.isValid() ? accent.toRgb() : QColor(defaultAccent);
    // White is the habit on buttons of any strong colour; dark text is for the light ones, such as yellow.
    colors.accentLabel = contrast(colors.accent, Qt::white) >= 3 ? QColor(Qt::white) : QColor(0x1c1c1e);
    colors.accentHovered = colors.accent.lighter(scheme == ColorScheme::dark ? 112 : 108);
    colors.accentPressed = colors.accent.darker(118);
    colors.link = legible(colors.accent, colors.windowBackground);
    colors.focusRing = colors.accent;
    colors.focusRing.setAlphaF(0.6F);
    return colors;
}

} // namespace kelo
