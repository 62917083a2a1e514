#include "KeloOnboarding/OnboardingModel.h"

#include <QSignalSpy>
#include <QTest>
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
        {3, 0, 0, "Continue"}, {3, 1, 1, "Continue"}, {3, 2, 2, "Done"},  {3, -3, 0, "Continue"},
        {3, 3, 2, "Done"},     {3, 99, 2, "Done"},    {1, 0, 0, "Done"},  {1, -1, 0, "Done"},
        {0, 0, 0, "Done"},     {0, 5, 0, "Done"},     {0, -5, 0, "Done"},
    };

    for (const auto &row : rows) {
        OnboardingModel model;
        model.open(steps(row.count), QStringLiteral("Done"), row.startAt);
        EXPECT_EQ(model.index(), row.index) << row.count << " steps from " << row.startAt;
        EXPECT_EQ(model.mainTitle().toStdString(), row.mainTitle) << row.count << " from " << row.startAt;
        EXPECT_EQ(model.pages().size(), row.count);
    }
}

TEST(OnboardingModel, movesForwardStepByStepAndThenFinishes)
{
    OnboardingModel model;
    int finished = 0;
    model.finish = [&finished] { ++finished; };
    model.open(steps(3), QStringLiteral("Done"), 0);
    QSignalSpy indexChanged(&model, &OnboardingModel::indexChanged);

    model.advance();
    model.advance();
    EXPECT_EQ(model.index(), 2);
    EXPECT_EQ(indexChanged.count(), 2);
    EXPECT_EQ(finished, 0);

    model.advance();
    EXPECT_EQ(model.index(), 2);
    EXPECT_EQ(indexChanged.count(), 2);
    EXPECT_EQ(finished, 1);
}

TEST(OnboardingModel, offersToSkipWhatIsNotCompleteAndAsksOnlyWhileItIsOnShow)
{
    bool isComplete = true;
    int asked = 0;
    std::vector<OnboardingStep> two = steps(2);
    two[0].isComplete = [&] {
        ++asked;
        return isComplete;
    };
    for (const bool isLeft : {false, true}) {
        OnboardingModel model{std::chrono::milliseconds(20)};
        model.open(two, QStringLiteral("Done"), 0);
        EXPECT_FALSE(model.canSkip());
        for (const bool now : {false, true, false}) {
            QSignalSpy canSkipChanged(&model, &OnboardingModel::canSkipChanged);
            isComplete = now;
            EXPECT_TRUE(canSkipChanged.wait());
            EXPECT_EQ(model.canSkip(), !now);
        }
        isLeft ? model.advance() : model.close();
        EXPECT_FALSE(isLeft && model.canSkip()) << "what waits for nothing isn't skipped";
        asked = 0;
        isComplete = true;
        QTest::qWait(60);
        EXPECT_EQ(asked, 0) << (isLeft ? "left" : "closed");
    }
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
