#include "KeloOnboarding/OnboardingModel.h"

#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <gmock/gmock.h>
#include <string>

namespace kelo {

namespace {

using testing::ElementsAre;

OnboardingStep step(const QString &id)
{
    OnboardingStep step;
    step.id = id;
    step.module = QStringLiteral("Views");
    step.component = QStringLiteral("Step");
    return step;
}

std::vector<OnboardingStep> steps(int count)
{
    std::vector<OnboardingStep> steps;
    for (int i = 0; i < count; ++i)
        steps.push_back(step(QString::number(i)));
    return steps;
}

} // namespace

TEST(OnboardingModel, startsOnAStepThatThereIs)
{
    const struct
    {
        int count;
        int startAt;
        int index;
        const char *mainTitle;
    } rows[] = {
        {3, 0, 0, "Continue"}, {3, 1, 1, "Continue"}, {3, 2, 2, "Done"}, {3, -3, 0, "Continue"},
        {3, 3, 2, "Done"},     {1, 0, 0, "Done"},     {0, 5, 0, "Done"},
    };

    for (const auto &row : rows) {
        OnboardingModel model;
        model.open(steps(row.count), QStringLiteral("Done"), row.startAt);
        EXPECT_EQ(model.index(), row.index) << row.count << " steps from " << row.startAt;
        EXPECT_EQ(model.mainTitle().toStdString(), row.mainTitle) << row.count << " from " << row.startAt;
        EXPECT_EQ(model.pages().size(), row.count);
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

TEST(OnboardingModel, movesLikeASpringThatPassesItsEndOnceByALittle)
{
    const QEasingCurve curve = OnboardingModel().motion();
    double furthest = 0;
    for (int i = 0; i <= 1000; ++i)
        furthest = std::max(furthest, curve.valueForProgress(i / 1000.0));
    EXPECT_NEAR(curve.valueForProgress(0), 0, 1e-9);
    // A damping of 0.85 passes the end by exp(-pi * 0.85 / sqrt(1 - 0.85^2)).
    EXPECT_NEAR(furthest, 1.0063, 0.0005);
    EXPECT_EQ(curve.valueForProgress(1), 1);
    // Half of the undamped period: nearly there.
    EXPECT_NEAR(curve.valueForProgress(0.25 / 0.65), 0.91, 0.03);
}

TEST(OnboardingModel, tellsStepsWhenTheyComeAndGo)
{
    std::vector<std::string> calls;
    const auto recorded = [&calls](const QString &id) {
        OnboardingStep one = step(id);
        one.onAppear = [&calls, id] { calls.push_back("+" + id.toStdString()); };
        one.onDisappear = [&calls, id] { calls.push_back("-" + id.toStdString()); };
        return one;
    };
    const std::vector steps{recorded(QStringLiteral("a")), recorded(QStringLiteral("b"))};
    {
        OnboardingModel model;
        model.open(steps, QString(), 0);
        model.advance();
        model.open(steps, QString(), 0);
        model.close();
        model.close();
        model.open(steps, QString(), 1);
    }
    EXPECT_THAT(calls, ElementsAre("+a", "-a", "+b", "-b", "+a", "-a", "+b", "-b"));
}

} // namespace kelo
