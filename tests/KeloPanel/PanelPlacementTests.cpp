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
const ScreenArea *left = &screens[0];
const ScreenArea *right = &screens[1];
const QSizeF panel(400, 200);

} // namespace

TEST(PanelPlacement, picksTheScreenOfThePointer)
{
    const struct
    {
        QPointF point;
        const ScreenArea *expected;
    } rows[] = {{{10, 0}, left},      {{1919.5, 500}, left},  {{1920, 500}, right},
                {{3199, 999}, right}, {{0, 1079.5}, left},    {{2000, 199}, nullptr},
                {{-5, 500}, nullptr}, {{3200, 500}, nullptr}, {{10, 1080}, nullptr}};

    for (const auto &[point, expected] : rows)
        EXPECT_EQ(screenContaining(screens, nullptr, point), expected) << point.x() << ", " << point.y();
    EXPECT_EQ(screenContaining(screens, right, {-5, 5000}), right) << "the main screen where there is none";
    EXPECT_EQ(screenIntersecting(screens, right, QRectF(1900, 300, 60, 20)), left) << "the first of two";
    EXPECT_EQ(screenIntersecting(screens, left, QRectF(2000, 300, 60, 20)), right);
    EXPECT_EQ(screenIntersecting(screens, right, QRectF(-100, -100, 10, 10)), right);
}

TEST(PanelPlacement, centresSlightlyAboveTheMiddle)
{
    // 60 % of 1052 counted from y = 1080 upwards is 448.8.
    EXPECT_EQ(centredOrigin(screens[0].visibleFrame, panel), QPointF(760, 348.8));
    EXPECT_EQ(centredOrigin(screens[1].visibleFrame, panel), QPointF(2360, 396));
}

TEST(PanelPlacement, hangsBelowItsAnchorAndStaysOnTheScreen)
{
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
        EXPECT_EQ(originNear(row.anchor, screens[0].visibleFrame, panel), row.expected) << row.name;
    const QRectF small(100, 50, 300, 150);
    EXPECT_EQ(originNear(QRectF(200, 60, 10, 10), small, panel), QPointF(0, 50)) << "top and right are kept";
}

} // namespace kelo
