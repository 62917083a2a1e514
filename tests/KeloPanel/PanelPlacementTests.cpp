#include "KeloPanel/PanelPlacement.h"

#include <array>
#include <gtest/gtest.h>

namespace kelo {

namespace {

// A wide screen with a bar at the top, and a smaller one on its right that hangs lower and has a dock below.
const std::array screens{
    ScreenArea{QRectF(0, 0, 1920, 1080), QRectF(0, 28, 1920, 1052)},
    ScreenArea{QRectF(1920, 200, 1280, 800), QRectF(1920, 200, 1280, 740)},
};
const QSizeF panel(400, 200);

} // namespace

TEST(PanelPlacement, picksTheScreenOfThePointer)
{
    struct Case
    {
        QPointF point;
        const ScreenArea *expected;
    };

    const ScreenArea *main = &screens[0];
    for (const auto &[point, expected] : {
             Case{{10, 10}, &screens[0]},
             Case{{1919.5, 500}, &screens[0]},
             Case{{1920, 500}, &screens[1]},
             Case{{3199, 999}, &screens[1]},
             Case{{2000, 100}, main}, // above the second screen
             Case{{-5, 5000}, main},
         })
        EXPECT_EQ(screenContaining(screens, main, point), expected) << point.x() << ", " << point.y();
    EXPECT_EQ(screenContaining({}, nullptr, {10, 10}), nullptr);
}

TEST(PanelPlacement, picksTheFirstScreenThatTheAnchorTouches)
{
    const ScreenArea *main = &screens[1];
    EXPECT_EQ(screenIntersecting(screens, main, QRectF(1900, 300, 60, 20)), &screens[0]);
    EXPECT_EQ(screenIntersecting(screens, main, QRectF(2000, 300, 60, 20)), &screens[1]);
    EXPECT_EQ(screenIntersecting(screens, main, QRectF(-100, -100, 10, 10)), main);
    EXPECT_EQ(screenIntersecting({}, nullptr, QRectF(0, 0, 10, 10)), nullptr);
}

TEST(PanelPlacement, centresSlightlyAboveTheMiddle)
{
    // 60 % of 1052 counted from y = 1080 upwards is 448.8.
    EXPECT_EQ(centredOrigin(screens[0].visibleFrame, panel), QPointF(760, 348.8));
    EXPECT_EQ(centredOrigin(screens[1].visibleFrame, panel), QPointF(2360, 396));
}

TEST(PanelPlacement, hangsBelowItsAnchorAndStaysOnTheScreen)
{
    struct Case
    {
        const char *name;
        QRectF anchor;
        QPointF expected;
    };

    const QRectF visible = screens[0].visibleFrame;
    for (const auto &[name, anchor, expected] : {
             Case{"below a button of the top bar", {900, 0, 40, 28}, {720, 40}},
             Case{"just fits below", {900, 828, 40, 40}, {720, 880}},
             Case{"one too low: above", {900, 829, 40, 40}, {720, 617}},
             Case{"above a button of the lower edge", {900, 1060, 40, 20}, {720, 848}},
             Case{"left edge", {0, 0, 20, 28}, {0, 40}},
             Case{"right edge", {1900, 0, 20, 28}, {1520, 40}},
         })
        EXPECT_EQ(originNear(anchor, visible, panel), expected) << name;
}

TEST(PanelPlacement, keepsTheTopAndRightOfAPanelLargerThanTheScreen)
{
    const QRectF visible(100, 50, 300, 150);
    EXPECT_EQ(originNear(QRectF(200, 60, 10, 10), visible, panel), QPointF(0, 50));
}

} // namespace kelo
