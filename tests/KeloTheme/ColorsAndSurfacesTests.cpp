#include "KeloTheme/GlassSurface.h"
#include "KeloTheme/SystemColors.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace kelo {

static QColor over(const QColor &color, const QColor &background)
{
    QImage pixel(1, 1, QImage::Format_ARGB32);
    pixel.fill(background);
    QPainter(&pixel).fillRect(pixel.rect(), color);
    return pixel.pixelColor(0, 0);
}

// The least contrasts are those of WCAG 2.1.
TEST(SystemColors, canBeReadWhateverTheAccent)
{
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(contrast(QColor(0x777777), Qt::white), 4.48, 0.01);
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        for (const char *accent : {"#0a6ce8", "#e66100", "#f6d32d", "#ffffff", "#000000", "#33d17a"}) {
            const SystemColors colors = SystemColors::of(scheme, QColor(QLatin1String(accent)));
            EXPECT_GE(contrast(colors.accentLabel, colors.accent), 3) << accent;
            EXPECT_GE(contrast(colors.link, colors.windowBackground), 4.5) << accent;
            for (const QColor &background : {colors.panel, colors.windowBackground, colors.groupBackground,
                                             over(colors.control, colors.panel)}) {
                EXPECT_GE(contrast(over(colors.label, background), background), 7);
                EXPECT_GE(contrast(over(colors.secondaryLabel, background), background), 4.5);
            }
            EXPECT_GE(contrast(colors.orange, colors.panel), 4.5);
            EXPECT_GE(contrast(colors.red, colors.windowBackground), 4);
            EXPECT_GE(contrast(colors.green, colors.windowBackground), 3);
        }
    }
}

TEST(GlassSurface, framesGrowByTheShadowOnlyWhereWindowsAreBlended)
{
    qputenv("MIVORA_COMPOSITING", "1");
    EXPECT_EQ(GlassSurface::floating({380, 150}),
              (FloatingFrame{{436, 206}, QRect(28, 28, 380, 150), 22, false}));
    EXPECT_EQ(GlassSurface::floating({100, 40}, 8).cornerRadius, 8);
    qputenv("MIVORA_COMPOSITING", "0");
    EXPECT_EQ(GlassSurface::floating({380, 150}),
              (FloatingFrame{{380, 150}, QRect(0, 0, 380, 150), 14, true}));
    qunsetenv("MIVORA_COMPOSITING");
}

TEST(GlassSurface, maskIsRoundAtTheCornersAndFullElsewhere)
{
    const auto [mask, inset] = GlassSurface::roundedMask(14);
    ASSERT_EQ(mask.size(), QSize(29, 29));
    EXPECT_EQ(inset, 14);
    for (const QPoint corner : {QPoint(0, 0), QPoint(28, 0), QPoint(0, 28), QPoint(28, 28)})
        EXPECT_EQ(mask.pixelColor(corner).alpha(), 0);
    for (const QPoint full : {QPoint(14, 0), QPoint(0, 14), QPoint(14, 28), QPoint(28, 14), QPoint(5, 5)})
        EXPECT_EQ(mask.pixelColor(full), QColor(Qt::black));
}

} // namespace kelo
