#include "KeloTheme/SystemColors.h"

#include <gtest/gtest.h>

namespace kelo {

namespace {

QColor over(const QColor &color, const QColor &background)
{
    const auto mix = [&](float one, float other) {
        return one * color.alphaF() + other * (1 - color.alphaF());
    };
    return QColor::fromRgbF(mix(color.redF(), background.redF()), mix(color.greenF(), background.greenF()),
                            mix(color.blueF(), background.blueF()));
}

} // namespace

TEST(SystemColors, textCanBeReadOnEveryBackground)
{
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        const SystemColors colors = SystemColors::of(scheme);
        for (const QColor &background : {colors.panel, colors.windowBackground, colors.groupBackground,
                                         over(colors.control, colors.panel)}) {
            EXPECT_GE(contrast(over(colors.label, background), background), 7);
            EXPECT_GE(contrast(over(colors.secondaryLabel, background), background), 4.5)
                << background.name().toStdString();
        }
        EXPECT_GE(contrast(colors.orange, colors.panel), 4.5);
        EXPECT_GE(contrast(colors.red, colors.windowBackground), 4);
        EXPECT_GE(contrast(colors.green, colors.windowBackground), 3);
    }
}

} // namespace kelo
