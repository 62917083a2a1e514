#include "KeloOnboarding/OnboardingWindowController.h"
#include "support/KeptViews.h"

#include <QPointer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace kelo {

namespace {

// Any component of the views will do for a step.
std::vector<OnboardingStep> steps(int count)
{
    OnboardingStep step;
    step.module = QStringLiteral("KeloThemeViews");
    step.component = QStringLiteral("KeloCard");
    return std::vector(std::size_t(count), step);
}

} // namespace

TEST(OnboardingModel, startsOnAStepThatThereIs)
{
    for (const auto &[count, startAt, index, title] :
         {std::tuple(3, -3, 0, "Continue"), {3, 1, 1, "Continue"}, {3, 3, 2, "Done"}, {0, 5, 0, "Done"}}) {
        OnboardingModel model;
        model.open(steps(count), QStringLiteral("Done"), startAt);
        EXPECT_EQ(model.index(), index) << count << " steps from " << startAt;
        EXPECT_EQ(model.mainTitle().toStdString(), title) << count << " steps from " << startAt;
        EXPECT_EQ(model.pages().size(), count);
    }
}

TEST(OnboardingModel, offersToSkipWhatIsNotComplete)
{
    bool isComplete = true;
    std::vector<OnboardingStep> two = steps(2);
    two[0].isComplete = [&] { return isComplete; };
    OnboardingModel model{std::chrono::milliseconds(20)};
    model.open(two, QStringLiteral("Done"), 0);
    EXPECT_FALSE(model.canSkip());
    for (const bool now : {false, true, false}) {
        QSignalSpy canSkipChanged(&model, &OnboardingModel::canSkipChanged);
        isComplete = now;
        EXPECT_TRUE(canSkipChanged.wait());
        EXPECT_EQ(model.canSkip(), !now);
    }
    model.advance();
    EXPECT_FALSE(model.canSkip()) << "what waits for nothing isn't skipped";
}

TEST(OnboardingWindowController, finishesOnceHoweverTheUserEndsItsWindow)
{
    for (const bool isByTheButton : {true, false}) {
        int ends = 0;
        OnboardingWindowController once(mivora::sharedViews(), QString(), {500, 400}, [&ends] { ++ends; });
        once.show(steps(2), QString(), 0);
        const QPointer<QWindow> window = once.window();
        EXPECT_EQ(window->maximumSize(), QSize(500, 400));
        EXPECT_FALSE(window->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
        if (isByTheButton) {
            once.model().advance();
            EXPECT_EQ(ends, 0);
            once.model().advance();
            once.model().advance();
        } else {
            window->close();
        }
        EXPECT_EQ(ends, 1);
        EXPECT_FALSE(once.window());
        QCoreApplication::processEvents();
        EXPECT_FALSE(window) << "the window was not let go";
        once.show(steps(1), QString(), 0);
        once.window()->close();
        EXPECT_EQ(ends, 1) << "it finishes no more";
    }
}

} // namespace kelo
