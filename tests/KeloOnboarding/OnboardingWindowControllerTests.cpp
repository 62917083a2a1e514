#include "KeloOnboarding/OnboardingWindowController.h"

#include "support/KeptViews.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTest>
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

class OnboardingWindowControllerTest : public testing::Test
{
public:
    OnboardingWindowControllerTest()
    {
        QGuiApplication::setQuitOnLastWindowClosed(false);
        controller = std::make_unique<OnboardingWindowController>(views, QStringLiteral("Welcome"),
                                                                  QSize(500, 400), [this] { ++finished; });
    }

    void show(int count, int startAt = 0)
    {
        controller->show(windowSteps(count), QStringLiteral("Done"), startAt);
        ASSERT_TRUE(controller->window());
        ASSERT_TRUE(QTest::qWaitForWindowActive(controller->window()));
    }

    int finished = 0;
    ViewLoader &views = mivora::sharedViews();
    std::unique_ptr<OnboardingWindowController> controller;
};

TEST_F(OnboardingWindowControllerTest, showsAWindowThatCannotBeResizedInTheMiddleOfTheScreen)
{
    EXPECT_FALSE(controller->window());
    show(2);

    const QWindow *window = controller->window();
    EXPECT_EQ(window->title(), QStringLiteral("Welcome"));
    EXPECT_EQ(window->size(), QSize(500, 400));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    EXPECT_FALSE(window->flags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_TRUE(window->flags() & Qt::WindowCloseButtonHint);
    EXPECT_EQ(window->geometry().center(), window->screen()->availableGeometry().center());
}

TEST_F(OnboardingWindowControllerTest, finishesOnceHoweverItEnds)
{
    enum class End { button, closed, closedOnTheLastStep, quit };
    for (const End end : {End::button, End::closed, End::closedOnTheLastStep, End::quit}) {
        int ends = 0;
        OnboardingWindowController once(views, QString(), QSize(500, 400), [&ends] { ++ends; });
        once.show(windowSteps(2), QString(), end == End::closedOnTheLastStep ? 1 : 0);
        const QPointer<QWindow> window = once.window();
        if (end == End::button) {
            once.model().advance();
            EXPECT_EQ(once.model().index(), 1);
            EXPECT_EQ(ends, 0);
            once.model().advance();
            once.model().advance();
        } else if (end == End::quit) {
            QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
            QCoreApplication::exec();
        } else {
            window->close();
        }

        EXPECT_EQ(ends, end == End::quit ? 0 : 1) << int(end);
        EXPECT_FALSE(once.window());
        QCoreApplication::processEvents();
        EXPECT_FALSE(window) << "the window was not let go";
    }
}

TEST_F(OnboardingWindowControllerTest, showsAgainAfterTheEndButFinishesNoMore)
{
    show(1);
    controller->window()->close();
    show(1);
    controller->window()->close();

    EXPECT_EQ(finished, 1);
    EXPECT_FALSE(controller->window());
}

} // namespace kelo
