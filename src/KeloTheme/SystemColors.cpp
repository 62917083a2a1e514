#include "KeloTheme/SystemColors.h"

#include <algorithm>
#include <cmath>
#include <vector>

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
    colors.outline = pick(black(0.48), white(0.44));
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

// Whatever of the interface lies behind texts and marks.
std::vector<QColor> surfaces(const SystemColors &colors)
{
    return {colors.windowBackground, colors.sidebarBackground, colors.groupBackground, colors.panel,
            over(colors.cardFill, colors.windowBackground)};
}

// The color, darker or lighter by as much as the contrast to all backgrounds wants: the steps lead to black
// or white at the latest.
QColor legible(const QColor &color, const std::vector<QColor> &backgrounds, double least)
{
    constexpr int steps = 40;
    const float change = (luminance(backgrounds.front()) < 0.18 ? 1.0F : -1.0F) / steps;
    const auto isLow = [&](const QColor &candidate) {
        return std::ranges::any_of(
            backgrounds, [&](const QColor &background) { return contrast(candidate, background) < least; });
    };
    QColor result = color.toHsl();
    for (int i = 0; i < steps && isLow(result.toRgb()); ++i) {
        const float lightness = std::clamp(result.lightnessF() + change, 0.0F, 1.0F);
        result.setHslF(result.hslHueF(), result.hslSaturationF(), lightness);
    }
    return result.toRgb();
}

// White is the habit on any strong colour, which is made a little darker for it; dark text is for the light
// ones, such as yellow.
void setAccent(SystemColors &colors, const QColor &accent)
{
    const bool isStrong = contrast(accent, Qt::white) >= 3;
    colors.accent = isStrong ? legible(accent, {Qt::white}, 4.5) : accent;
    colors.accentLabel = isStrong ? QColor(Qt::white) : QColor(0x1c1c1e);
    colors.accentHovered = isStrong ? colors.accent.darker(110) : colors.accent.lighter(106);
    colors.accentPressed = isStrong ? colors.accent.darker(125) : colors.accent.lighter(112);
}

// From here on all edges are seen.
void raiseContrast(SystemColors &colors, ColorScheme scheme)
{
    const bool isDark = scheme == ColorScheme::dark;
    colors.label = isDark ? Qt::white : Qt::black;
    colors.secondaryLabel = isDark ? white(0.85) : black(0.8);
    colors.outline = isDark ? white(0.49) : black(0.6);
    colors.separator = colors.controlBorder = colors.cardBorder = colors.panelBorder = colors.outline;
    colors.panelHighlight = Qt::transparent;
}

} // namespace

QColor over(const QColor &color, const QColor &background)
{
    const auto mix = [part = color.alphaF()](float above, float below) {
        return above * part + below * (1 - part);
    };
    return QColor::fromRgbF(mix(color.redF(), background.redF()), mix(color.greenF(), background.greenF()),
                            mix(color.blueF(), background.blueF()));
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

SystemColors SystemColors::of(ColorScheme scheme, const QColor &accent, ContrastLevel level)
{
    const bool isHigh = level == ContrastLevel::high;
    const QColor own = accent.isValid() ? accent.toRgb() : QColor(defaultAccent);
    SystemColors colors = colorsOf(scheme);
    if (isHigh)
        raiseContrast(colors, scheme);
    setAccent(colors, own);
    std::vector<QColor> behind = surfaces(colors);
    colors.mark = legible(own, behind, isHigh ? 4.5 : 3);
    colors.markLabel = contrast(colors.mark, Qt::white) >= 3 ? Qt::white : Qt::black;
    for (QColor *text : {&colors.orange, &colors.red, &colors.green})
        *text = legible(*text, behind, isHigh ? 7 : 4.5);
    // A button without a face has one while it is pressed.
    behind.push_back(over(colors.controlPressed, colors.windowBackground));
    colors.link = legible(own, behind, isHigh ? 7 : 4.5);
    return colors;
}

} // namespace kelo
