#include "FirstRun.h"

#include "Onboarding/FirstMeetingModel.h"
#include "support/AccessibleView.h"
#include "support/KeptViews.h"

#include <QQuickWindow>
#include <QTest>
#include <gmock/gmock.h>
#include <string>

namespace mivora {

namespace {

using support::AccessibleView;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr auto notDetermined = CalendarAuthorization::notDetermined;
constexpr auto denied = CalendarAuthorization::denied;
constexpr auto granted = CalendarAuthorization::granted;

} // namespace

class FirstRunTest : public testing::Test
{
public:
    void show(FirstRunStep step)
    {
        run.flow.show(step);
        ASSERT_TRUE(window());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
    }

    QQuickWindow *window() const
    {
        return run.flow.window() ? qobject_cast<QQuickWindow *>(run.flow.window()->window()) : nullptr;
    }

    int index() const { return run.flow.window()->model().index(); }

    std::vector<std::string> names() const { return AccessibleView(*window()).allNames(); }

    void press(int key) const { QTest::keyClick(window(), Qt::Key(key)); }

    std::string focused() const { return AccessibleView(*window()).focused().toStdString(); }

    FirstRun run{notDetermined};
};

TEST_F(FirstRunTest, beginsAtLaunchWhereThereIsSomethingToDo)
{
    run.flow.showAtLaunch();
    EXPECT_EQ(index(), 0);
    window()->close();
    EXPECT_TRUE(run.prefs.hasCompletedOnboarding());

    run.flow.showAtLaunch();
    EXPECT_FALSE(window()) << "once is enough";

    run.prefs.setHasCompletedOnboarding(false);
    run.source.access = granted;
    run.flow.showAtLaunch();
    EXPECT_EQ(index(), 2);

    const QQuickWindow *open = window();
    run.flow.show(FirstRunStep::calendar);
    EXPECT_EQ(window(), open);
    EXPECT_EQ(index(), 1) << "an open walkthrough starts anew";
}

TEST_F(FirstRunTest, endsByRememberingLettingGoAndRefreshingInThisOrder)
{
    std::vector<std::string> calls;
    QObject::connect(&run.prefs, &Preferences::hasCompletedOnboardingChanged, &run.prefs,
                     [&] { calls.emplace_back(run.flow.window() ? "remembered" : "too late"); });
    run.scheduler.onRefresh = [&] { calls.emplace_back(run.flow.window() ? "too early" : "refreshed"); };
    show(FirstRunStep::firstMeeting);
    EXPECT_TRUE(calls.empty());

    press(Qt::Key_Return);

    EXPECT_THAT(calls, ElementsAre("remembered", "refreshed"));
    EXPECT_FALSE(run.flow.window());
}

TEST_F(FirstRunTest, saysWhatTheAccessIs)
{
    const struct
    {
        CalendarAuthorization access;
        std::vector<const char *> shown;
        std::vector<const char *> absent;
    } rows[] = {
        {notDetermined,
         {"Allow Calendar Access", "Skip for now"},
         {"Access granted", "Open System Settings"}},
        {granted, {"Access granted"}, {"Allow Calendar Access", "Open System Settings", "Skip for now"}},
        {denied,
         {"Open System Settings", "Skip for now",
          "Turn on Mivora under Privacy & Security → Calendars, then come back here."},
         {"Allow Calendar Access", "Access granted"}},
    };

    for (const auto &row : rows) {
        run.source.access = row.access;
        show(FirstRunStep::calendar);
        const std::vector<std::string> found = names();
        for (const char *text : row.shown)
            EXPECT_THAT(found, Contains(text)) << int(row.access);
        for (const char *text : row.absent)
            EXPECT_THAT(found, Not(Contains(text))) << int(row.access);
        EXPECT_THAT(found, Contains("Let Mivora read your calendar"));
        EXPECT_THAT(found, Contains("Step 2 of 3"));
    }
}

TEST_F(FirstRunTest, isWalkedThroughWithTheKeyboardAlone)
{
    run.source.events = {withLink(makeMeeting("Design review", at("2026-03-10T10:30:00Z")))};
    show(FirstRunStep::welcome);
    EXPECT_THAT(names(), Contains("Your next meeting, one click away."));
    press(Qt::Key_Return);
    EXPECT_EQ(index(), 1);

    std::vector<std::string> stops;
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        stops.push_back(focused());
    }
    EXPECT_THAT(stops, ElementsAre("Allow Calendar Access",
                                   "Using Google or Outlook? Add the account in Internet Accounts and its "
                                   "calendars show up here.",
                                   "Skip for now", "Continue"));
    press(Qt::Key_Backtab);
    press(Qt::Key_Backtab);
    press(Qt::Key_Space);
    EXPECT_EQ(run.opened.size(), 1);

    press(Qt::Key_Backtab);
    press(Qt::Key_Space);
    ASSERT_TRUE(run.source.accessAnswer);
    run.source.access = granted;
    run.source.accessAnswer(true);
    EXPECT_THAT(names(), Contains("Access granted"));

    press(Qt::Key_Return);
    EXPECT_EQ(index(), 2);
    EXPECT_THAT(names(), Contains("Here's your next meeting"));
    EXPECT_THAT(names(), Contains("Design review, 10:30 AM · Zoom"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !testing::Value(names(), Contains("Access granted")); }))
        << "the step that was left is gone";

    press(Qt::Key_Return);
    EXPECT_FALSE(run.flow.window());
    EXPECT_TRUE(run.prefs.hasCompletedOnboarding());
}

TEST_F(FirstRunTest, endsWithTheNextMeetingAsItIsFound)
{
    run.source.access = granted;
    show(FirstRunStep::firstMeeting);
    EXPECT_THAT(names(), Contains("No meetings today"));
    EXPECT_THAT(names(),
                Contains("A minute before each meeting, the Join panel appears. Change the lead time "
                         "in Settings."));
    EXPECT_THAT(names(), Contains("Start Using Mivora"));
    EXPECT_THAT(names(), Not(Contains("The countdown is in your menu bar from now on.")));

    Meeting standup = makeMeeting("Daily\nstandup", at("2026-03-10T11:00:00Z"));
    standup.calendarColor = Color{226, 120, 40};
    run.source.events = {standup};
    run.scheduler.refresh();
    EXPECT_THAT(names(), Contains("Daily standup, 11:00 AM · no link"));
    const FirstMeetingModel model(run.scheduler, [](Timestamp) { return QString(); });
    EXPECT_EQ(model.color(), QStringLiteral("#e27828"));
}

} // namespace mivora
