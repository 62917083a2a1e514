#include "Onboarding/CalendarStepModel.h"

#include "support/FakeEventSource.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace mivora {

class CalendarStepModelTest : public testing::Test
{
public:
    FakeEventSource source;
    int refreshed = 0;
    QStringList opened;
    CalendarStepModel model{source, [this] { ++refreshed; },
                            [this](const QString &link) { opened.append(link); },
                            std::chrono::milliseconds(20)};
    QSignalSpy statusChanged{&model, &CalendarStepModel::statusChanged};
};

TEST_F(CalendarStepModelTest, refreshesOncePerChangeThatItSees)
{
    source.access = CalendarAuthorization::denied;
    model.appear();
    EXPECT_EQ(refreshed, 0) << "what the step finds when it appears is no change";
    statusChanged.clear();
    int changes = 0;
    for (const auto access : {CalendarAuthorization::granted, CalendarAuthorization::notDetermined}) {
        source.access = access;
        EXPECT_TRUE(statusChanged.wait());
        EXPECT_EQ(model.status(), access);
        EXPECT_EQ(refreshed, ++changes);
    }
}

TEST_F(CalendarStepModelTest, asksOnceAndRefreshesOnceWhoeverSeesTheAnswerFirst)
{
    enum class Seen { byTheAnswer, byThePoll };
    for (const auto access : {CalendarAuthorization::granted, CalendarAuthorization::notDetermined}) {
        for (const Seen seen : {Seen::byTheAnswer, Seen::byThePoll}) {
            source.access = CalendarAuthorization::notDetermined;
            model.appear();
            refreshed = 0;
            statusChanged.clear();
            model.requestAccess();
            const auto answer = std::exchange(source.accessAnswer, nullptr);
            model.requestAccess();
            EXPECT_FALSE(source.accessAnswer) << "an answer is awaited";
            source.access = access;
            const bool isChange = access != CalendarAuthorization::notDetermined;
            EXPECT_EQ(seen == Seen::byThePoll && isChange && statusChanged.wait(),
                      seen == Seen::byThePoll && isChange);
            answer(access == CalendarAuthorization::granted);
            EXPECT_EQ(model.status(), access);
            EXPECT_EQ(refreshed, 1) << int(access) << int(seen);
        }
    }
}

TEST_F(CalendarStepModelTest, leadsToTheSystemSettings)
{
    model.openCalendarPrivacy();
    model.openInternetAccounts();
    EXPECT_EQ(opened.join(u'|'),
              QStringLiteral("x-apple.systempreferences:com.apple.preference.security?Privacy_Calendars|"
                             "x-apple.systempreferences:com.apple.Internet-Accounts-Settings.extension"));
}

} // namespace mivora
