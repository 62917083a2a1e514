#include "KeloPanel/Screens.h"
#include "KeloPanel/backends/X11WorkArea.h"

#include <gtest/gtest.h>

namespace kelo {

TEST(Screens, havePlaceForPanelsInTheMiddleAndBesideAnAnchor)
{
    // A bar at the top.
    const QRectF area(0, 28, 1920, 1052);
    const QSizeF panel(400, 200);
    // 60 % of 1052 counted from y = 1080 upwards is 448.8.
    EXPECT_EQ(centredOrigin(area, panel), QPointF(760, 348.8));

    const struct
    {
        const char *name;
        QRectF anchor;
        QPointF expected;
    } rows[] = {
        {"below a button of the top bar", {900, 0, 40, 28}, {720, 40}},
        {"just fits below", {900, 828, 40, 40}, {720, 880}},
        {"one too low: above", {900, 829, 40, 40}, {720, 617}},
        {"left edge", {0, 0, 20, 28}, {0, 40}},
        {"right edge", {1900, 0, 20, 28}, {1520, 40}},
    };

    for (const auto &row : rows)
        EXPECT_EQ(originNear(row.anchor, area, panel), row.expected) << row.name;
    EXPECT_EQ(originInside({200, 60}, {100, 50, 300, 150}, panel), QPointF(0, 50))
        << "top and right are kept";
}

TEST(Screens, loseOnlyTheBarsThatStandOnThem)
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
    const std::vector<Strut> absurd{{0, 0, 1080, 0, 0, 0, 0, 0, 0, 3199, 0, 0}};
    EXPECT_EQ(withoutStruts(right, desktop, absurd), right);
}

} // namespace kelo
