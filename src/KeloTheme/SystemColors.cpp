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

SystemColors light()
{
    SystemColors colors;
    colors.label = black(0.86);
    colors.secondaryLabel = black(0.6);
    colors.tertiaryLabel = black(0.38);
    colors.separator = black(0.1);
    colors.windowBackground = QColor(0xf4f4f6);
    colors.sidebarBackground = QColor(0xeaeaee);
    colors.groupBackground = QColor(0xffffff);
    colors.control = black(0.07);
    colors.controlHovered = black(0.1);
    colors.controlPressed = black(0.16);
    colors.controlBorder = black(0.04);
    colors.orange = QColor(0xb84d00);
    colors.red = QColor(0xd7263d);
    colors.green = QColor(0x1f8f45);
    colors.panel = QColor(0xf8f8fa);
    colors.panelBorder = black(0.12);
    colors.panelHighlight = white(0.9);
    colors.cardFill = black(0.055);
    colors.cardBorder = black(0.09);
    return colors;
}

SystemColors dark()
{
    SystemColors colors;
    colors.label = white(0.92);
    colors.secondaryLabel = white(0.62);
    colors.tertiaryLabel = white(0.38);
    colors.separator = white(0.12);
    colors.windowBackground = QColor(0x1f1f22);
    colors.sidebarBackground = QColor(0x27272b);
    colors.groupBackground = QColor(0x2b2b2f);
    colors.control = white(0.12);
    colors.controlHovered = white(0.17);
    colors.controlPressed = white(0.24);
    colors.controlBorder = white(0.05);
    colors.orange = QColor(0xffa033);
    colors.red = QColor(0xff6b70);
    colors.green = QColor(0x3ecf6b);
    colors.panel = QColor(0x29292d);
    colors.panelBorder = black(0.55);
    colors.panelHighlight = white(0.14);
    colors.cardFill = white(0.055);
    colors.cardBorder = white(0.09);
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
    SystemColors colors = scheme == ColorScheme::dark ? dark() : light();
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
