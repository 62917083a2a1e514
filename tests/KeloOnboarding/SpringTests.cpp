#include "KeloOnboarding/Spring.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace kelo {

TEST(Spring, comesToRestAtItsEndHavingPassedItOnceByALittle)
{
    const QEasingCurve curve = springCurve();
    double furthest = 0;
    for (int i = 0; i <= 1000; ++i)
        furthest = std::max(furthest, curve.valueForProgress(i / 1000.0));

    EXPECT_NEAR(curve.valueForProgress(0), 0, 1e-9);
    // A damping of 0.85 passes the end by exp(-pi * 0.85 / sqrt(1 - 0.85^2)).
    EXPECT_NEAR(furthest, 1.0063, 0.0005);
    EXPECT_NEAR(curve.valueForProgress(0.9999), 1, 0.002);
    EXPECT_EQ(curve.valueForProgress(1), 1);
    // Half of the undamped period: nearly there.
    EXPECT_NEAR(curve.valueForProgress(0.25 / 0.65), 0.91, 0.03);
}

} // namespace kelo
