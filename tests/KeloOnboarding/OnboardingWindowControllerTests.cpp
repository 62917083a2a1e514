#include "KeloOnboarding/OnboardingWindowController.h"

#include "support/KeptViews.h"

#include <QCoreApplication>
#include <QPointer>
#include <QScreen>
#include <gtest/gtest.h>

namespace kelo {

namespace {

// Any component of the views will do for a step.
std::vector<OnboardingStep> windowSteps(int count)
{
    std::vector<OnboardingStep> steps(count);
    for (OnboardingStep &step : steps) {
        step.module = QStringLiteral("KeloThemeViews");
        step.component = QStringLiteral("KeloCard");
    }
    return steps;
}

} // namespace

TEST(OnboardingWindowController, showsAWindowThatCannotBeResizedInTheMiddleOfTheScreen)
{
    OnboardingWindowController controller(mivora::sharedViews(), QStringLiteral("Welcome"), {500, 400}, {});
    EXPECT_FALSE(controller.window());
    controller.show(windowSteps(2), QStringLiteral("Done"), 0);
    const QWindow *window = controller.window();
    ASSERT_TRUE(window && window->isVisible());
    EXPECT_EQ(window->title(), QStringLiteral("Welcome"));
    EXPECT_EQ(window->size(), QSize(500, 400));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_FALSE(window->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(window->flags() & Qt::WindowCloseButtonHint);
    EXPECT_EQ(window->geometry().center(), window->screen()->availableGeometry().center());
}

TEST(OnboardingWindowController, finishesOnceHoweverTheUserEndsIt)
{
    enum class End { button, closed, closedOnTheLastStep };
    for (const End end : {End::button, End::closed, End::closedOnTheLastStep}) {
        int ends = 0;
        OnboardingWindowController once(mivora::sharedViews(), QString(), {500, 400}, [&ends] { ++ends; });
        once.show(windowSteps(2), QString(), end == End::closedOnTheLastStep ? 1 : 0);
        const QPointer<QWindow> window = once.window();
        if (end == End::button) {
            once.model().advance();
            EXPECT_EQ(once.model().index(), 1);
            EXPECT_EQ(ends, 0);
            once.model().advance();
            once.model().advance();
        } else {
            window->close();
        }
        EXPECT_EQ(ends, 1) << int(end);
        EXPECT_FALSE(once.window());
        QCoreApplication::processEvents();
        EXPECT_FALSE(window) << "the window was not let go";
        once.show(windowSteps(1), QString(), 0);
        once.window()->close();
        EXPECT_EQ(ends, 1) << "it finishes no more";
    }
}

} // namespace kelo
