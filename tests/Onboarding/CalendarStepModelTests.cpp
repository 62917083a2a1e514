#include "Onboarding/CalendarStepModel.h"

#include "support/FakeEventSource.h"

#include <QSignalSpy>
#include <QTest>
#include <chrono>
#include <gtest/gtest.h>

namespace mivora {

class CalendarStepModelTest : public testing::Test
{
public:
    static constexpr std::chrono::milliseconds interval{20};

    /// Waits until the permission is read once more.
    static void waitForPoll() { QTest::qWait(3 * int(interval.count())); }

    FakeEventSource source;
    int refreshed = 0;
    QStringList opened;
    CalendarStepModel model{source, [this] { ++refreshed; },
                            [this](const QString &link) { opened.append(link); }, interval};
    QSignalSpy statusChanged{&model, &CalendarStepModel::statusChanged};
};

TEST_F(CalendarStepModelTest, refreshesOncePerChangeThatItSees)
{
    source.access = CalendarAuthorization::denied;
    model.appear();
    EXPECT_EQ(refreshed, 0) << "what the step finds when it appears is no change";
    statusChanged.clear();

    source.access = CalendarAuthorization::granted;
    EXPECT_TRUE(statusChanged.wait());
    EXPECT_TRUE(model.isGranted());
    EXPECT_EQ(refreshed, 1);

    waitForPoll();
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(statusChanged.count(), 1);

    source.access = CalendarAuthorization::notDetermined;
    EXPECT_TRUE(statusChanged.wait());
    EXPECT_TRUE(model.canAsk());
    EXPECT_EQ(refreshed, 2);
}

TEST_F(CalendarStepModelTest, seesNothingOnceItHasDisappeared)
{
    source.access = CalendarAuthorization::denied;
    model.appear();
    model.disappear();

    source.access = CalendarAuthorization::granted;
    waitForPoll();

    EXPECT_TRUE(model.isDenied());
    EXPECT_EQ(refreshed, 0);
}

TEST_F(CalendarStepModelTest, refreshesOnceWhenARequestIsAnswered)
{
    enum class Seen { byTheAnswer, byThePoll };
    for (const auto access : {CalendarAuthorization::granted, CalendarAuthorization::denied,
                              CalendarAuthorization::notDetermined}) {
        for (const Seen seen : {Seen::byTheAnswer, Seen::byThePoll}) {
            source.access = CalendarAuthorization::notDetermined;
            model.appear();
            refreshed = 0;

            model.requestAccess();
            source.access = access;
            if (seen == Seen::byThePoll)
                waitForPoll();
            source.accessAnswer(access == CalendarAuthorization::granted);

            EXPECT_EQ(model.status(), access);
            EXPECT_EQ(refreshed, 1) << int(access) << int(seen);
        }
    }
    waitForPoll();
    EXPECT_EQ(refreshed, 1);
}

TEST_F(CalendarStepModelTest, asksOnceUntilItIsAnswered)
{
    source.access = CalendarAuthorization::notDetermined;
    model.appear();
    model.requestAccess();
    const auto answer = std::exchange(source.accessAnswer, nullptr);

    model.requestAccess();
    EXPECT_FALSE(source.accessAnswer);

    answer(false);
    model.requestAccess();
    EXPECT_TRUE(source.accessAnswer);
}

TEST_F(CalendarStepModelTest, mayBeGoneWhenTheAnswerComes)
{
    int calls = 0;
    {
        CalendarStepModel gone(source, [&calls] { ++calls; }, {});
        gone.requestAccess();
    }
    source.accessAnswer(true);
    EXPECT_EQ(calls, 0);
}

TEST_F(CalendarStepModelTest, leadsToTheSystemSettings)
{
    model.openCalendarPrivacy();
    model.openInternetAccounts();

    EXPECT_EQ(opened, QStringList({
                          QStringLiteral("x-apple.systempreferences:"
                                         "com.apple.preference.security?Privacy_Calendars"),
                          QStringLiteral("x-apple.systempreferences:"
                                         "com.apple.Internet-Accounts-Settings.extension"),
                      }));
}

} // namespace mivora
