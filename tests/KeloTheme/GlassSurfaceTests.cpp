#include "KeloTheme/GlassSurface.h"

#include <gtest/gtest.h>

namespace kelo {

class GlassSurfaceTest : public testing::Test
{
public:
    void TearDown() override { qunsetenv("MIVORA_COMPOSITING"); }
};

TEST_F(GlassSurfaceTest, framesGrowByTheShadowOnlyWhereWindowsAreBlended)
{
    qputenv("MIVORA_COMPOSITING", "1");
    EXPECT_EQ(GlassSurface::floating({380, 150}),
              (FloatingFrame{{436, 206}, QRect(28, 28, 380, 150), 22, false}));
    EXPECT_EQ(GlassSurface::floating({100, 40}, 8).cornerRadius, 8);
    qputenv("MIVORA_COMPOSITING", "0");
    EXPECT_EQ(GlassSurface::floating({380, 150}),
              (FloatingFrame{{380, 150}, QRect(0, 0, 380, 150), 14, true}));
}

TEST_F(GlassSurfaceTest, maskIsRoundAtTheCornersAndFullElsewhere)
{
    const auto [mask, inset] = GlassSurface::roundedMask(14);
    ASSERT_EQ(mask.size(), QSize(29, 29));
    EXPECT_EQ(inset, 14);
    for (const QPoint corner : {QPoint(0, 0), QPoint(28, 0), QPoint(0, 28), QPoint(28, 28)})
        EXPECT_EQ(mask.pixelColor(corner).alpha(), 0);
    for (const QPoint full : {QPoint(14, 0), QPoint(0, 14), QPoint(14, 28), QPoint(28, 14), QPoint(5, 5)})
        EXPECT_EQ(mask.pixelColor(full), QColor(Qt::black));
}

TEST_F(GlassSurfaceTest, shadowIsSoftFallsBelowAndSparesTheSurface)
{
    for (const int ratio : {1, 2}) {
        const auto [shadow, inset] = GlassSurface::shadow(22, ratio);
        const int middle = inset;
        const int margin = GlassSurface::floatingShadowMargin * ratio;
        const int end = shadow.height() - 1;
        const auto alpha = [&image = shadow](int x, int y) { return image.pixelColor(x, y).alpha(); };
        EXPECT_EQ(alpha(middle, middle), 0);
        EXPECT_EQ(alpha(middle, margin), 0) << "the surface's first line";
        EXPECT_EQ(alpha(middle, end - margin), 0) << "the surface's last line";
        EXPECT_GT(alpha(middle, end - margin + 1), 40);
        EXPECT_GT(alpha(middle, end - margin + 1), 2 * alpha(middle, margin - 1));
        EXPECT_LE(alpha(middle, end), 3) << "it has faded where the window ends";
        EXPECT_EQ(alpha(0, 0), 0);
        // What is stretched must look the same all along.
        EXPECT_EQ(alpha(middle - 1, end - margin + 2), alpha(middle + 1, end - margin + 2));
    }
}

} // namespace kelo
