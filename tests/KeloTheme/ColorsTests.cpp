#include "KeloTheme/SystemColors.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <vector>

namespace kelo {

namespace {

/// What is drawn, and on what: the surfaces and what else there is. The least contrasts are those of
/// WCAG 2.1.
struct Pair
{
    const char *name;
    QColor SystemColors::*drawn;
    std::vector<QColor SystemColors::*> faces;
    bool isOnSurfaces;
    double least;
};

using C = SystemColors;

const std::vector<Pair> pairs{
    {"label", &C::label, {&C::control, &C::controlPressed}, true, 4.5},
    {"secondaryLabel", &C::secondaryLabel, {&C::control}, true, 4.5},
    {"link", &C::link, {&C::control, &C::controlPressed}, true, 4.5},
    {"orange", &C::orange, {}, true, 4.5},
    {"red", &C::red, {}, true, 4.5},
    {"green", &C::green, {}, true, 4.5},
    {"accentLabel", &C::accentLabel, {&C::accent, &C::accentHovered, &C::accentPressed}, false, 4.5},
    {"mark", &C::mark, {&C::cardFill}, true, 3},
    {"outline", &C::outline, {&C::cardFill}, true, 3},
    {"markLabel", &C::markLabel, {&C::mark}, false, 3},
};

double leastContrast(const SystemColors &colors, const Pair &pair)
{
    std::vector<QColor> backgrounds;
    if (pair.isOnSurfaces)
        backgrounds = {colors.panel, colors.windowBackground, colors.groupBackground,
                       colors.sidebarBackground};
    for (const auto face : pair.faces)
        backgrounds.push_back(over(colors.*face, colors.windowBackground));
    double least = 21;
    for (const QColor &background : backgrounds)
        least = std::min(least, contrast(over(colors.*pair.drawn, background), background));
    return least;
}

} // namespace

// The table stands in the output: light and dark, by accent; then the same with high contrast.
TEST(SystemColors, standOutWhateverTheAccent)
{
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x777777), Qt::white), 4.48, 0.01);
    for (const ContrastLevel level : {ContrastLevel::normal, ContrastLevel::high}) {
        for (const Pair &pair : pairs) {
            std::printf("%-15s", pair.name);
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                for (const char *accent :
                     {"#0a6ce8", "#e66100", "#f6d32d", "#ffffff", "#000000", "#33d17a"}) {
                    const auto colors = SystemColors::of(scheme, QColor(QLatin1String(accent)), level);
                    const double found = leastContrast(colors, pair);
                    std::printf(" %5.2f", found);
                    EXPECT_GE(found, pair.least) << pair.name << int(scheme) << accent << int(level);
                    EXPECT_GE(contrast(Qt::white, over(colors.outline, colors.groupBackground)), 3);
                }
            }
            std::printf("\n");
        }
    }
}

} // namespace kelo
