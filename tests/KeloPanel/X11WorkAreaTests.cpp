#include "KeloPanel/backends/X11WorkArea.h"

#include <gtest/gtest.h>

namespace kelo {

TEST(X11WorkArea, eachScreenLosesOnlyTheBarsThatStandOnIt)
{
    // Two screens side by side, the right one lower: the desktop is 3200 x 1080.
    const QSize desktop(3200, 1080);
    const QRect left(0, 0, 1920, 1080);
    const QRect right(1920, 280, 1280, 800);
    const Strut topOfLeft{0, 0, 28, 0, 0, 0, 0, 0, 0, 1919, 0, 0};
    const Strut bottomOfRight{0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 1920, 3199};
    const Strut leftOfLeft{48, 0, 0, 0, 28, 1079, 0, 0, 0, 0, 0, 0};
    const Strut rightOfRight{0, 40, 0, 0, 0, 0, 280, 1079, 0, 0, 0, 0};
    // Above the right screen there is a gap of 280 that a bar on it has to count in.
    const Strut topOfRight{0, 0, 310, 0, 0, 0, 0, 0, 1920, 3199, 0, 0};
    const std::vector<Strut> all{topOfLeft, bottomOfRight, leftOfLeft, rightOfRight, topOfRight,
                                 {},        {1, 2, 3}};
    EXPECT_EQ(withoutStruts(left, desktop, all), QRect(48, 28, 1872, 1052));
    EXPECT_EQ(withoutStruts(right, desktop, all), QRect(1920, 310, 1240, 710));
    EXPECT_EQ(withoutStruts(right, desktop, {}), right);
    const std::vector<Strut> absurd{{0, 0, 1080, 0, 0, 0, 0, 0, 0, 3199, 0, 0}};
    EXPECT_EQ(withoutStruts(right, desktop, absurd), right);
}

} // namespace kelo
