#include "KeloTheme/GlassSurface.h"

#include <gtest/gtest.h>

namespace kelo {

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
